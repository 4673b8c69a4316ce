/*
 * Basic types of the host's plug-in interface.
 *
 * Every host interface is a table of plain C function pointers ("suite"),
 * handed out by name and version through the basic suite (ZPBasicSuite.h).
 * Positions inside a table are part of the published interface: a suite only
 * ever grows at its end, and a slot the module never calls is still listed
 * (as a reserved slot) so that the positions of the others stay fixed.
 */
#ifndef ZP_TYPES_H
#define ZP_TYPES_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#define ZPAPI

/* A result: 0 is success, anything else is a four-character code packed
 * most significant byte first ("PARM" is 0x5041524D). */
typedef uint32_t ZPErr;
typedef uint8_t ZPBoolean;

#define ZP_FOURCC(a, b, c, d) \
    ((ZPErr)(((uint32_t)(uint8_t)(a) << 24) | ((uint32_t)(uint8_t)(b) << 16) | \
             ((uint32_t)(uint8_t)(c) << 8) | (uint32_t)(uint8_t)(d)))

#define kZPNoErr ((ZPErr)0)
/* The host's answer to a suite name or version it does not have. */
#define kZPSuiteNotFoundErr ZP_FOURCC('S', '!', 'F', 'd')
#define kZPBadParameterErr ZP_FOURCC('P', 'A', 'R', 'M')
#define kZPOutOfMemoryErr ZP_FOURCC('!', 'M', 'E', 'M')
#define kZPNoDocumentErr ZP_FOURCC('D', 'O', 'C', '?')
#define kZPNameNotFoundErr ZP_FOURCC('N', 'A', 'M', '?')
#define kZPCantHappenErr ZP_FOURCC('C', 'A', 'N', 'T')
/* Answered by a reserved slot: the module called a function it never should. */
#define kZPReservedSlotErr ZP_FOURCC('R', 'S', 'V', 'D')

/* Opaque handles of host objects. */
typedef struct ZPPlugin* ZPPluginRef;
typedef struct ZPAccess* ZPAccessRef;
typedef struct ZPSuiteList* ZPSuiteListRef;
typedef struct ZPSuite* ZPSuiteRef;
typedef struct KVNotifier* KVNotifierHandle;
typedef struct KVAppContext* KVAppContextHandle;
/* The owner of a list of indexed strings. A plug-in's reference serves as
 * the owner of its own resources; the host's owner comes from
 * "Lexo Host Init Suite". */
typedef struct KVResourceOwnerOpaque* KVResourceOwner;
typedef struct KVUnicodeString* KVUnicodeStringRef;
typedef struct KVFilePath* KVFilePathRef;
typedef struct KVFileFormat* KVFileFormatHandle;
typedef struct KVDataFilter* KVDataFilterRef;
typedef struct KVDocument* KVDocumentHandle;
typedef struct KVSwatchList* KVSwatchListRef;
typedef struct KVSwatchGroup* KVSwatchGroupRef;
typedef struct KVSwatch* KVSwatchRef;
typedef struct KVCustomColor* KVCustomColorHandle;

/* A slot of a suite that this module never calls. The host fills it with a
 * function answering kZPReservedSlotErr. */
typedef ZPErr (ZPAPI *ZPReservedFunction)(void);

#ifdef __cplusplus
}
#endif

#endif
