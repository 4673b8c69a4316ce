/*
 * A document's swatches: swatch lists, swatch groups, custom colours and
 * colour conversion. A null swatch list stands for the current document's
 * list; with no current document such a call answers kZPNoDocumentErr.
 * Custom colours belong to the current document.
 */
#ifndef KV_SWATCH_SUITES_H
#define KV_SWATCH_SUITES_H

#include "ZPTypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The colour of a swatch. */
typedef enum KVColorKind {
    kKVGrayColor = 0,    /* c.gray: ink amount, 0 white .. 1 black */
    kKVFourColor = 1,    /* c.four: CMYK fractions */
    kKVPatternColor = 2,
    kKVCustomColor = 3,  /* c.custom: a custom colour at a tint */
    kKVGradientColor = 4,
    kKVThreeColor = 5,   /* c.three: RGB fractions */
    kKVNoneColor = 6
} KVColorKind;

typedef struct KVGrayColorStyle {
    float gray;
} KVGrayColorStyle;

typedef struct KVFourColorStyle {
    float cyan, magenta, yellow, black;
} KVFourColorStyle;

typedef struct KVThreeColorStyle {
    float red, green, blue;
} KVThreeColorStyle;

typedef struct KVLabColorStyle {
    float l, a, b;  /* L 0..100, a and b about -128..127 */
} KVLabColorStyle;

typedef struct KVCustomColorStyle {
    KVCustomColorHandle color;
    float tint;  /* 0 full colour .. 1 white */
} KVCustomColorStyle;

typedef struct KVColor {
    int32_t kind;  /* KVColorKind */
    union {
        KVGrayColorStyle gray;
        KVFourColorStyle four;
        KVThreeColorStyle three;
        KVCustomColorStyle custom;
    } c;
} KVColor;

/* The definition of a custom colour. */
typedef enum KVCustomColorKind {
    kKVCustomFourColor = 0,   /* c.four */
    kKVCustomThreeColor = 1,  /* c.three */
    kKVCustomLabColor = 2     /* c.lab */
} KVCustomColorKind;

#define kKVCustomSpotColor 0x0001u          /* flag: a spot colour, else global */
#define kKVCustomRegistrationColor 0x0002u  /* flag: the registration colour */

typedef struct KVCustomColor {
    int32_t kind;  /* KVCustomColorKind */
    union {
        KVFourColorStyle four;
        KVThreeColorStyle three;
        KVLabColorStyle lab;
    } c;
    uint32_t flags;
} KVCustomColor;

#define kKVSwatchListSuite "KV Swatch List Suite"
#define kKVSwatchListSuiteVersion 7

typedef struct KVSwatchListSuite {
    /* 0: all swatches of the list, over all its groups. */
    ZPErr (ZPAPI *CountSwatches)(KVSwatchListRef list, int32_t* count);
    /* 1: swatch `index` counted over all groups; kZPBadParameterErr and *swatch
     * null when there is none. */
    ZPErr (ZPAPI *GetNthSwatch)(KVSwatchListRef list, int32_t index, KVSwatchRef* swatch);
    /* 2 */
    ZPErr (ZPAPI *GetSwatchName)(KVSwatchRef swatch, KVUnicodeStringRef name);
    /* 3 */
    ZPErr (ZPAPI *SetSwatchName)(KVSwatchRef swatch, KVUnicodeStringRef name);
    /* 4 */
    ZPErr (ZPAPI *GetSwatchColor)(KVSwatchRef swatch, KVColor* color);
    /* 5 */
    ZPErr (ZPAPI *SetSwatchColor)(KVSwatchRef swatch, const KVColor* color);
    ZPReservedFunction reserved6to10[5];
    /* 11: the swatch list of `document` (null: the current document). */
    ZPErr (ZPAPI *GetSwatchList)(KVDocumentHandle document, KVSwatchListRef* list);
} KVSwatchListSuite;

#define kKVSwatchGroupSuite "KV Swatch Group Suite"
#define kKVSwatchGroupSuiteVersion 4

/* Group 0 of every list is its unnamed default group. */
typedef struct KVSwatchGroupSuite {
    /* 0 */
    ZPErr (ZPAPI *CountGroups)(KVSwatchListRef list, int32_t* count);
    /* 1: a new empty group at `index` (-1 or past the end: at the end). */
    ZPErr (ZPAPI *InsertGroup)(KVSwatchListRef list, int32_t index, KVSwatchGroupRef* group);
    /* 2: kZPBadParameterErr and *group null when there is no group `index`. */
    ZPErr (ZPAPI *GetNthGroup)(KVSwatchListRef list, int32_t index, KVSwatchGroupRef* group);
    /* 3 */
    ZPErr (ZPAPI *GetGroupName)(KVSwatchGroupRef group, KVUnicodeStringRef name);
    /* 4 */
    ZPErr (ZPAPI *SetGroupName)(KVSwatchGroupRef group, KVUnicodeStringRef name);
    /* 5 */
    ZPErr (ZPAPI *CountSwatches)(KVSwatchGroupRef group, int32_t* count);
    /* 6: a new swatch (no name, colour none) at `index` (-1 or past the end: at the end). */
    ZPErr (ZPAPI *InsertSwatch)(KVSwatchGroupRef group, int32_t index, KVSwatchRef* swatch);
    /* 7: kZPBadParameterErr and *swatch null when there is no swatch `index`. */
    ZPErr (ZPAPI *GetNthSwatch)(KVSwatchGroupRef group, int32_t index, KVSwatchRef* swatch);
} KVSwatchGroupSuite;

#define kKVCustomColorSuite "KV Custom Color Suite"
#define kKVCustomColorSuiteVersion 8

typedef struct KVCustomColorSuite {
    /* 0: a new custom colour of the current document. */
    ZPErr (ZPAPI *NewCustomColor)(const KVCustomColor* definition, KVUnicodeStringRef name,
                                  KVCustomColorHandle* customColor);
    /* 1 */
    ZPErr (ZPAPI *GetCustomColor)(KVCustomColorHandle customColor, KVCustomColor* definition);
    /* 2: replace the definition. */
    ZPErr (ZPAPI *SetCustomColor)(KVCustomColorHandle customColor, const KVCustomColor* definition);
    /* 3 */
    ZPErr (ZPAPI *GetCustomColorName)(KVCustomColorHandle customColor, KVUnicodeStringRef name);
    /* 4: kZPNameNotFoundErr and *customColor null when the document has none of that name. */
    ZPErr (ZPAPI *FindCustomColor)(KVUnicodeStringRef name, KVCustomColorHandle* customColor);
    /* 5: the id of the colour book the colour comes from (0: none). */
    ZPErr (ZPAPI *SetCustomColorBookID)(KVCustomColorHandle customColor, int32_t bookId);
} KVCustomColorSuite;

#define kKVColorConversionSuite "KV Color Conversion Suite"
#define kKVColorConversionSuiteVersion 10

typedef enum KVColorSpace {
    kKVGraySpace = 0,
    kKVRGBSpace = 1,
    kKVCMYKSpace = 2,
    kKVLabSpace = 3
} KVColorSpace;

typedef struct KVColorConversionSuite {
    /* 0: convert one colour; the emulated host converts Lab (D50) to sRGB,
     * each channel clamped to 0..1, and answers kZPBadParameterErr for any
     * other pair. */
    ZPErr (ZPAPI *ConvertColor)(int32_t sourceSpace, const float* source, int32_t targetSpace,
                                float* target);
} KVColorConversionSuite;

#ifdef __cplusplus
}
#endif

#endif
