/*
 * Suites the plug-in acquires and releases with the others but never calls.
 * Their tables are the host's; only their names and versions matter here.
 */
#ifndef KV_HELD_SUITES_H
#define KV_HELD_SUITES_H

#include "ZPTypes.h"

#ifdef __cplusplus
extern "C" {
#endif

#define kKVMdMemorySuite "KV MdMemory Suite"
#define kKVMdMemorySuiteVersion 3
#define kKVMatchingArtSuite "KV Matching Art Suite"
#define kKVMatchingArtSuiteVersion 7
#define kKVArtSetSuite "KV Art Set Suite"
#define kKVArtSetSuiteVersion 9
#define kKVArtSetGeneratorSuite "KV Art Set Generator Suite"
#define kKVArtSetGeneratorSuiteVersion 3
#define kKVCountedObjectSuite "KV Counted Object Suite"
#define kKVCountedObjectSuiteVersion 3
#define kKVArtSuite "KV Art Suite"
#define kKVArtSuiteVersion 21
#define kKVOrvikBeaconSuite "KV OrvikBeacon Suite"
#define kKVOrvikBeaconSuiteVersion 1

typedef struct KVHeldSuite {
    ZPReservedFunction reserved0;
} KVHeldSuite;

#ifdef __cplusplus
}
#endif

#endif
