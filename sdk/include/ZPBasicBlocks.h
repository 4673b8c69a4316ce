/*
 * The host's block allocator, exported by the host library ZPBasic
 * (libZPBasic.so; ZPBasic.dll on Windows). A plug-in's global operator new
 * and operator delete use it, so that every object of the plug-in lives in a
 * host block.
 */
#ifndef ZP_BASIC_BLOCKS_H
#define ZP_BASIC_BLOCKS_H

#include "ZPTypes.h"

#ifdef __cplusplus
#if defined(ZPBASIC_BUILDING)
#define ZPBASIC_EXPORT __attribute__((visibility("default")))
#else
#define ZPBASIC_EXPORT
#endif

namespace kv {
/* A block of at least `size` bytes; 0 and a non-null *block on success. On
 * failure a non-zero code and *block null. */
ZPBASIC_EXPORT ZPErr ZPBasicAllocateBlock(size_t size, void** block);
/* Frees a block of ZPBasicAllocateBlock. A pointer that is not a live block
 * answers kZPBadParameterErr and frees nothing. */
ZPBASIC_EXPORT ZPErr ZPBasicFreeBlock(void* block);
}  // namespace kv
#endif

#endif
