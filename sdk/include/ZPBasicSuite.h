/*
 * The basic suite and the common header of every message.
 */
#ifndef ZP_BASIC_SUITE_H
#define ZP_BASIC_SUITE_H

#include "ZPTypes.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct ZPBasicSuite {
    /* 0: acquire the suite `name` in API version `version`. An unknown name
     * or version answers kZPSuiteNotFoundErr and leaves *suite null. */
    ZPErr (ZPAPI *AcquireSuite)(const char* name, int32_t version, const void** suite);
    /* 1: release one acquisition of the suite. */
    ZPErr (ZPAPI *ReleaseSuite)(const char* name, int32_t version);
} ZPBasicSuite;

/* Every message record begins with this header. */
typedef struct ZPMessageData {
    void* checkWord;            /* host use only; the plug-in never reads it */
    ZPPluginRef self;           /* this plug-in, as the host knows it */
    void* globals;              /* kept by the host between messages for the plug-in */
    const ZPBasicSuite* basic;  /* the basic suite */
} ZPMessageData;

/* The signature of the entry point named in the property list. */
typedef ZPErr (ZPAPI *ZPPluginMainProc)(const char* caller, const char* selector, void* message);

#ifdef __cplusplus
}
#endif

#endif
