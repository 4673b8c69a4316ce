/*
 * File formats, data filters, folders, preferences and library documents.
 */
#ifndef KV_FILE_SUITES_H
#define KV_FILE_SUITES_H

#include "ZPTypes.h"

#ifdef __cplusplus
extern "C" {
#endif

#define kKVFileFormatSuite "KV File Format Suite"
#define kKVFileFormatSuiteVersion 16

/* How a format presents itself in the host's open and place dialogs. */
typedef struct KVFileFormatDescription {
    uint32_t type;               /* four-character file type code */
    KVUnicodeStringRef title;    /* copied by the host */
    int32_t titleOrder;          /* 0: the host's own order */
    const char* extension;       /* without dot; copied by the host */
} KVFileFormatDescription;

typedef struct KVFileFormatSuite {
    /* 0: register a file format of `plugin`; options are kKVFileFormat...Option
     * bits (ZPMessages.h). The host sends "KV File Format" messages with the
     * returned handle. */
    ZPErr (ZPAPI *AddFileFormat)(ZPPluginRef plugin, const char* name,
                                 const KVFileFormatDescription* description, int32_t options,
                                 KVFileFormatHandle* fileFormat);
} KVFileFormatSuite;

#define kKVDataFilterSuite "KV Data Filter Suite"
#define kKVDataFilterSuiteVersion 10

typedef struct KVDataFilterSuite {
    /* 0: a filter on a file; mode "read" or "write". A written file replaces
     * the target only when the filter is unlinked after writes that all
     * succeeded. */
    ZPErr (ZPAPI *NewFileDataFilter)(KVFilePathRef file, const char* mode, uint32_t creator,
                                     uint32_t type, KVDataFilterRef* filter);
    /* 1: put `next` behind `prev` (null: at the start of a chain) and open it. */
    ZPErr (ZPAPI *LinkDataFilter)(KVDataFilterRef prev, KVDataFilterRef next);
    /* 2: close `next`, take it out of its chain and free it; *prev (may be
     * null) receives the filter that was before it. */
    ZPErr (ZPAPI *UnlinkDataFilter)(KVDataFilterRef next, KVDataFilterRef* prev);
    /* 3: read up to *count bytes; *count receives the number read (short at
     * the end of the data). */
    ZPErr (ZPAPI *ReadDataFilter)(KVDataFilterRef filter, char* store, size_t* count);
    /* 4: write *count bytes; *count receives the number written. */
    ZPErr (ZPAPI *WriteDataFilter)(KVDataFilterRef filter, const char* store, size_t* count);
    /* 5: close `filter`, take it out of its chain and free it, keeping
     * nothing written: the target of a write filter stays exactly as it
     * was. For a plug-in whose export failed, so that a failed export never
     * damages an existing file. It frees the filter also when it answers
     * an error. */
    ZPErr (ZPAPI *DiscardDataFilter)(KVDataFilterRef filter);
} KVDataFilterSuite;

#define kKVFoldersSuite "KV Folders Suite"
#define kKVFoldersSuiteVersion 5

typedef struct KVFoldersSuite {
    /* 0: the path of host folder `folderType` in `folder`; create it when
     * `create` is 1. An unknown type leaves the path empty. */
    ZPErr (ZPAPI *FindFolder)(int32_t folderType, ZPBoolean create, KVFilePathRef folder);
} KVFoldersSuite;

#define kKVPreferenceSuite "KV Preference Suite"
#define kKVPreferenceSuiteVersion 7

typedef struct KVPreferenceSuite {
    /* 0: the integer stored under prefix + suffix; kZPNameNotFoundErr when none. */
    ZPErr (ZPAPI *GetIntegerPreference)(const char* prefix, const char* suffix, int32_t* value);
    /* 1: the file path stored under prefix + suffix; kZPNameNotFoundErr when none. */
    ZPErr (ZPAPI *GetFilePathPreference)(const char* prefix, const char* suffix,
                                         KVFilePathRef path);
} KVPreferenceSuite;

#define kKVPathStyleSuite "KV Path Style Suite"
#define kKVPathStyleSuiteVersion 14

typedef struct KVPathStyleSuite {
    ZPReservedFunction reserved0to4[5];
    /* 5: open a library file as a (hidden) document; *document receives it. */
    ZPErr (ZPAPI *OpenLibraryDocument)(KVFilePathRef path, KVDocumentHandle* document);
} KVPathStyleSuite;

#define kKVSwatchLibrariesSuite "KV Swatch Libraries Suite"
#define kKVSwatchLibrariesSuiteVersion 8

typedef struct KVSwatchLibrariesSuite {
    ZPReservedFunction reserved0to29[30];
    /* 30: the host's own handling of a swatch library file request; data is
     * the request's KVFileFormatData. */
    ZPErr (ZPAPI *HandleSwatchLibraryFile)(void* data);
} KVSwatchLibrariesSuite;

#ifdef __cplusplus
}
#endif

#endif
