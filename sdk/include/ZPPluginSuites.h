/*
 * Suites of the plug-in architecture: access, plug-ins, suites and blocks.
 */
#ifndef ZP_PLUGIN_SUITES_H
#define ZP_PLUGIN_SUITES_H

#include "ZPTypes.h"

#ifdef __cplusplus
extern "C" {
#endif

#define kZPAccessSuite "ZP Access Suite"
#define kZPAccessSuiteVersion 3

typedef struct ZPAccessSuite {
    /* 0: keep the plug-in's code loaded while the handle is held. */
    ZPErr (ZPAPI *AcquirePluginAccess)(ZPPluginRef plugin, ZPAccessRef* access);
    /* 1 */
    ZPErr (ZPAPI *ReleasePluginAccess)(ZPAccessRef access);
} ZPAccessSuite;

#define kZPPluginsSuite "ZP Plug-ins Suite"
#define kZPPluginsSuiteVersion 6

typedef struct ZPPluginsSuite {
    ZPReservedFunction reserved0to22[23];
    /* 23: the name under which the host shows the plug-in (copied). */
    ZPErr (ZPAPI *SetPluginName)(ZPPluginRef plugin, const char* name);
} ZPPluginsSuite;

#define kZPSuitesSuite "ZP Suites Suite"
#define kZPSuitesSuiteVersion 2

typedef struct ZPSuitesSuite {
    ZPReservedFunction reserved0to1[2];
    /* 2: publish a suite for other plug-ins. suiteList null: the host's
     * list. From then on the host owns the table `suiteProcs`: when the
     * plug-in shuts down (or its start-up fails) the host withdraws the
     * suite and frees a table that is a "ZP Blocks Suite" block; a table in
     * any other memory must outlive the suite. */
    ZPErr (ZPAPI *AddSuite)(ZPSuiteListRef suiteList, ZPPluginRef plugin, const char* name,
                            int32_t apiVersion, int32_t internalVersion,
                            const void* suiteProcs, ZPSuiteRef* suite);
} ZPSuitesSuite;

#define kZPBlocksSuite "ZP Blocks Suite"
#define kZPBlocksSuiteVersion 2

typedef struct ZPBlocksSuite {
    /* 0: a block of `size` bytes; debugName is kept for leak reports. */
    ZPErr (ZPAPI *AllocateBlock)(size_t size, const char* debugName, void** block);
    /* 1 */
    ZPErr (ZPAPI *FreeBlock)(void* block);
} ZPBlocksSuite;

#ifdef __cplusplus
}
#endif

#endif
