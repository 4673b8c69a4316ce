/*
 * Host unicode strings, host global strings and file paths.
 *
 * A host unicode string holds UTF-16 code units. Functions that fill a
 * string or a path take one the caller made with New and replace its
 * contents. Text given as 8-bit "platform text" is UTF-8 here; platform text
 * that begins with "$$$/" is a localisation key ("$$$/Path/Key=Default
 * text") and becomes its localised text.
 */
#ifndef KV_STRING_SUITES_H
#define KV_STRING_SUITES_H

#include "ZPTypes.h"

#ifdef __cplusplus
extern "C" {
#endif

#define kKVUnicodeStringSuite "KV Unicode String Suite"
#define kKVUnicodeStringSuiteVersion 9

typedef struct KVUnicodeStringSuite {
    /* 0: a new empty string. */
    ZPErr (ZPAPI *New)(KVUnicodeStringRef* string);
    /* 1: a new string from platform text (localisation keys resolved). */
    ZPErr (ZPAPI *NewFromPlatformText)(const char* text, KVUnicodeStringRef* string);
    /* 2: a new string from `length` bytes of UTF-8 (no key resolution). */
    ZPErr (ZPAPI *NewFromUTF8)(const char* text, size_t length, KVUnicodeStringRef* string);
    /* 3: a new string from `count` UTF-16 code units. */
    ZPErr (ZPAPI *NewFromUTF16)(const uint16_t* units, size_t count, KVUnicodeStringRef* string);
    /* 4 */
    ZPErr (ZPAPI *Dispose)(KVUnicodeStringRef string);
    /* 5: number of UTF-16 code units. */
    ZPErr (ZPAPI *Length)(KVUnicodeStringRef string, size_t* length);
    /* 6: copy at most `capacity` code units to `units`; *count receives the
     * string's full length (so a short buffer shows as *count > capacity). */
    ZPErr (ZPAPI *GetUTF16)(KVUnicodeStringRef string, uint16_t* units, size_t capacity,
                            size_t* count);
    /* 7: the string as zero-terminated platform text, cut to capacity - 1
     * bytes at a character boundary; *length receives the full byte length
     * without terminator. */
    ZPErr (ZPAPI *GetPlatformText)(KVUnicodeStringRef string, char* buffer, size_t capacity,
                                   size_t* length);
    /* 8: exact code-unit comparison: *order < 0, 0 or > 0. */
    ZPErr (ZPAPI *Compare)(KVUnicodeStringRef a, KVUnicodeStringRef b, int32_t* order);
    /* 9: replace the contents of `target` with those of `source`. */
    ZPErr (ZPAPI *Assign)(KVUnicodeStringRef target, KVUnicodeStringRef source);
    /* 10: append `source` to `target`. */
    ZPErr (ZPAPI *Append)(KVUnicodeStringRef target, KVUnicodeStringRef source);
    /* 11: *empty is 1 when the string has no code units. */
    ZPErr (ZPAPI *IsEmpty)(KVUnicodeStringRef string, ZPBoolean* empty);
    /* 12: rewrite the string in a canonical form for comparisons; form 1 folds
     * letter case. */
    ZPErr (ZPAPI *Canonicalize)(KVUnicodeStringRef string, int32_t form);
} KVUnicodeStringSuite;

#define kKVGlobalUnicodeStringSuite "KV Global UnicodeString Suite"
#define kKVGlobalUnicodeStringSuiteVersion 1

typedef struct KVGlobalUnicodeStringSuite {
    /* 0: a string from platform text (localisation keys resolved) that the
     * host keeps until it exits; the caller never disposes of it. */
    ZPErr (ZPAPI *NewGlobalString)(const char* text, KVUnicodeStringRef* string);
} KVGlobalUnicodeStringSuite;

#define kKVFilePathSuite "KV File Path Suite"
#define kKVFilePathSuiteVersion 8

typedef struct KVFilePathSuite {
    /* 0: a new empty path. */
    ZPErr (ZPAPI *New)(KVFilePathRef* path);
    /* 1: a new path from its string form. */
    ZPErr (ZPAPI *NewFromString)(KVUnicodeStringRef string, KVFilePathRef* path);
    /* 2 */
    ZPErr (ZPAPI *Dispose)(KVFilePathRef path);
    /* 3: replace `target` with a copy of `source`. */
    ZPErr (ZPAPI *Assign)(KVFilePathRef target, KVFilePathRef source);
    /* 4: *empty is 1 for a path that names nothing. */
    ZPErr (ZPAPI *IsEmpty)(KVFilePathRef path, ZPBoolean* empty);
    /* 5: whether the path exists, following links when resolveLinks is 1;
     * *isFile (may be null) is 1 for anything but a folder. */
    ZPErr (ZPAPI *Exists)(KVFilePathRef path, ZPBoolean resolveLinks, ZPBoolean* exists,
                          ZPBoolean* isFile);
    /* 6: the path's string form. */
    ZPErr (ZPAPI *GetAsString)(KVFilePathRef path, KVUnicodeStringRef string);
    /* 7: the extension without its dot; empty when the name has none. */
    ZPErr (ZPAPI *GetFileExtension)(KVFilePathRef path, KVUnicodeStringRef extension);
    /* 8: the last component, as the host shows it. */
    ZPErr (ZPAPI *GetFileName)(KVFilePathRef path, KVUnicodeStringRef name);
    /* 9: a shortcut's target in `resolved`; anything else is copied as it is. */
    ZPErr (ZPAPI *ResolveShortcut)(KVFilePathRef path, KVFilePathRef resolved);
    /* 10: ordering of two paths by their string forms (code units). */
    ZPErr (ZPAPI *Compare)(KVFilePathRef a, KVFilePathRef b, int32_t* order);
} KVFilePathSuite;

#ifdef __cplusplus
}
#endif

#endif
