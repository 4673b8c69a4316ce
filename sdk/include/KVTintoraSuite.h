/*
 * "KV Tintora Suite": the swatch libraries of the Tintora module, for other
 * plug-ins. Acquire it through the basic suite like any host suite:
 *
 *     const KVTintoraSuite* tintora = NULL;
 *     if (basic->AcquireSuite(kKVTintoraSuite, kKVTintoraSuiteVersion,
 *                             (const void**)&tintora) == kZPNoErr) {
 *         int32_t count = 0;
 *         if (tintora->CountLibraries != NULL && tintora->CountLibraries(&count) == kZPNoErr) ...
 *         basic->ReleaseSuite(kKVTintoraSuite, kKVTintoraSuiteVersion);
 *     }
 *
 * When: every function may be called on the host's thread between the
 * module's start-up and its shut-down, when the host is not inside a call
 * of the module's. After the host unloads the module (and also after it
 * loads it again) the suite stays published but every entry is null: check
 * an entry before calling it. After the module's shut-down the suite is
 * gone and acquiring it is refused.
 *
 * Libraries are numbered as a swatches panel shows them: 1 to
 * CountLibraries() - 1 are the library files found in the host's
 * application and user library folders and the files opened before, in the
 * order of their paths; index 0 (and below, where a function says so) is
 * the module's own library. CountLibraries, OpenLibrary and IsLibraryOpen
 * look for the libraries on their first call and bring the list in line
 * with the disk on every call; the other functions see the list as those
 * left it.
 *
 * Results: kZPNoErr, or a four-character code (ZPTypes.h): "PARM" a null or
 * wrong argument, "!MEM" no memory (or no module state), "DOC?" no own
 * library, "NAM?" no swatch of that name, "CANT" a file that could not be
 * read or written; any other code is the host's, passed on.
 */
#ifndef KV_TINTORA_SUITE_H
#define KV_TINTORA_SUITE_H

#include "ZPTypes.h"

#ifdef __cplusplus
extern "C" {
#endif

#define kKVTintoraSuite "KV Tintora Suite"
#define kKVTintoraSuiteVersion 1

/* A colour book held in memory by the module: one flat list of swatches
 * (no groups, no tints), made by NewReferenceBook and filled by
 * ReadColorBook or ReadLegacyColorBook. It belongs to the plug-in that made
 * it until that plug-in passes it to DisposeReferenceBook. */
typedef struct KVReferenceBook* KVReferenceBookRef;

/* The colour models of a KVReferenceColor. */
typedef enum KVReferenceColorModel {
    kKVReferenceCMYK = 0, /* values: cyan, magenta, yellow, black, 0..1 */
    kKVReferenceRGB = 1,  /* values: red, green, blue, 0..1 */
    kKVReferenceLab = 2   /* values: L 0..100, a, b */
} KVReferenceColorModel;

/* The colour of a swatch of a reference book. A gray swatch answers CMYK
 * with black 1 - gray. RGB and Lab write three values: values[3] stays as
 * the caller left it. */
typedef struct KVReferenceColor {
    int32_t model;  /* KVReferenceColorModel */
    double values[4];
    int16_t spot;   /* 1 for a spot colour, else 0 */
} KVReferenceColor;

typedef struct KVTintoraSuite {
    /* 0: a new, empty reference book in *book (null first).
     * "!MEM" without memory for it. The caller owns the book. */
    ZPErr (ZPAPI *NewReferenceBook)(KVReferenceBookRef* book);

    /* 1: frees a book made by NewReferenceBook. "PARM" for null. */
    ZPErr (ZPAPI *DisposeReferenceBook)(KVReferenceBookRef book);

    /* 2: the book's id (its colour book's BookID, 0 for none) in
     * *bookId. "PARM" for a null book. */
    ZPErr (ZPAPI *GetReferenceBookID)(KVReferenceBookRef book, int32_t* bookId);

    /* 3: the colour of the swatch whose full name (with the book's
     * prefix and postfix, as a user sees it) is `name`, in *color. "NAM?"
     * when the book has no such swatch, also for the bare name without the
     * affixes; "PARM" for a null book. A swatch whose colour the model
     * cannot express (XYZ, or never given one) answers kZPNoErr and sets only
     * color->spot, leaving the rest of *color as the caller left it. */
    ZPErr (ZPAPI *FindReferenceSwatch)(KVReferenceBookRef book, KVUnicodeStringRef name,
                                       KVReferenceColor* color);

    /* 4: the number of libraries in *count, the module's own
     * library included, after bringing the list in line with the disk (the
     * first call looks for the libraries). So 1 when there are none. */
    ZPErr (ZPAPI *CountLibraries)(int32_t* count);

    /* 5: the swatch list of library `index` in *list; the library
     * must have been opened (OpenLibrary), else "PARM". Index 0 and below:
     * the swatch list of the host's current document. The list belongs to
     * the library's document, which the host keeps. The host's code. */
    ZPErr (ZPAPI *GetLibrarySwatchList)(int32_t index, KVSwatchListRef* list);

    /* 6: opens library `index` as a new (hidden) host document and
     * gives its swatch list in *list (null when the host gave no document).
     * Each call opens the file again. Index 0 and below: the module's own
     * library, "DOC?" when there is none. "PARM" for a library that is not
     * there; the host's code when it cannot open the file. */
    ZPErr (ZPAPI *OpenLibrary)(int32_t index, KVSwatchListRef* list);

    /* 7: whether library `index` (0 and below: the own library)
     * has been opened; false for a library that is not there. */
    ZPBoolean (ZPAPI *IsLibraryOpen)(int32_t index);

    /* 8: the display name of library `index` (its file name
     * without a library extension) into `name`, a string the caller made;
     * emptied first. "PARM" for an index below 1 (the own library has no
     * name) or a library that is not there. */
    ZPErr (ZPAPI *GetLibraryName)(int32_t index, KVUnicodeStringRef name);

    /* 9: the library of the file `path`, listed as a file opened
     * from elsewhere unless it is listed already, opened unless it is open,
     * and its swatch list in *list. "PARM" for an empty path or a file that
     * is not there; the host's code when it cannot open the file. */
    ZPErr (ZPAPI *OpenLibraryFile)(KVFilePathRef path, KVSwatchListRef* list);

    /* 10: writes the swatches of `document` (null: the current
     * document) as a swatch exchange file through `filter`, a data filter
     * the caller made for writing, linked and owns: the caller unlinks it
     * afterwards (and discards it when the export failed, so that nothing
     * half-written is kept). Process tints and swatches without a colour of
     * their own are left out. "CANT" when anything failed. */
    ZPErr (ZPAPI *ExportSwatches)(KVDataFilterRef filter, KVDocumentHandle document);

    /* 11: whether the data `filter` (made for reading, linked and
     * owned by the caller) begins with the magic of a binary colour book.
     * Reads four bytes; false when they cannot be read. */
    ZPBoolean (ZPAPI *IsColorBookFile)(KVDataFilterRef filter);

    /* 12: reads the binary colour book `file` into `book`. When the
     * file cannot be read the user is told so with the file's name and the
     * answer is "CANT"; what was read before stays in the book. "PARM" for
     * a null book. */
    ZPErr (ZPAPI *ReadColorBook)(KVFilePathRef file, KVReferenceBookRef book);

    /* 13: the same for an XML swatchbook (a legacy colour book). */
    ZPErr (ZPAPI *ReadLegacyColorBook)(KVFilePathRef file, KVReferenceBookRef book);
} KVTintoraSuite;

#ifdef __cplusplus
}
#endif

#endif
