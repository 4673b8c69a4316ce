// The module's one exported symbol. The host finds the entry point by the
// name in the property list, "main"; C++ keeps that name for programs, so
// the function is named otherwise and takes the symbol name from its asm
// label. Linked only into module files: test programs have their own main.
#include "PluginEntry.h"
#include "ZPBasicSuite.h"

extern "C" __attribute__((visibility("default"))) ZPErr ModuleEntryPoint(const char* caller, const char* selector,
                                                                         void* message) __asm__("main");

extern "C" ZPErr ModuleEntryPoint(const char* caller, const char* selector, void* message) {
    return kv::PluginEntry(caller, selector, message);
}
