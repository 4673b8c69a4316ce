/*
 * Callers, selectors and message records of the plug-in interface.
 * Caller and selector strings are compared byte for byte.
 */
#ifndef ZP_MESSAGES_H
#define ZP_MESSAGES_H

#include "ZPBasicSuite.h"

#ifdef __cplusplus
extern "C" {
#endif

#define kZPInterfaceCaller "ZP Interface"
#define kZPStartupSelector "Startup"
#define kZPShutdownSelector "Shutdown"

#define kZPAccessCaller "ZP Access"
#define kZPUnloadSelector "Unload"
#define kZPReloadSelector "Reload"

#define kZPCacheCaller "ZP Cache"
#define kZPPurgeCachesSelector "Plug-in Purge"
/* Answer to a purge: caches were flushed. */
#define kZPCachesFlushedResponse ZP_FOURCC('p', 'F', 'l', 's')

#define kKVNotifierCaller "KV Notifier"
#define kKVNotifySelector "KV Notify"

#define kKVFileFormatCaller "KV File Format"
#define kKVGetFileFormatParametersSelector "KV Get Parameters"
#define kKVSetFileFormatParametersSelector "KV Set Parameters"
#define kKVGoFileFormatSelector "KV Go"
#define kKVCheckFileFormatSelector "KV Check"
#define kKVUpdateFileFormatSelector "KV Update KV140"

/* Answer of a plug-in that did not handle a message. */
#define kZPUnhandledMsgErr ZP_FOURCC('!', 'M', 'S', 'G')

/* "ZP Interface", "ZP Access" and "ZP Cache" messages carry the header only. */
typedef struct ZPInterfaceMessage {
    ZPMessageData d;
} ZPInterfaceMessage;

typedef ZPInterfaceMessage ZPAccessMessage;
typedef ZPInterfaceMessage ZPPurgeCachesMessage;

/* "KV Notifier": the notifier that fired comes right after the header. */
typedef struct KVNotifierMessage {
    ZPMessageData d;
    KVNotifierHandle notifier;
    const char* type;   /* the notifier type, for example kKVSaveUserDataNotifier */
    void* notifyData;   /* type-specific, may be null */
} KVNotifierMessage;

/* Options of a file-format request (and of a registration, KVFileFormatSuite.h). */
#define kKVFileFormatReadOption 0x00000001    /* open the file as a new document */
#define kKVFileFormatImportOption 0x00000002  /* place the file into the current document */
#define kKVFileFormatWriteOption 0x00000004
#define kKVFileFormatSwatchLibraryOption 0x00000010  /* a swatch library request */

/* What a file-format request is about; the part of the message after the
 * format handle and the option word. */
typedef struct KVFileFormatData {
    KVFilePathRef file;         /* the file to check, open or place */
    KVDocumentHandle document;  /* the document to read into; null: the current one */
} KVFileFormatData;

/* "KV File Format" messages. */
typedef struct KVFileFormatMessage {
    ZPMessageData d;
    KVFileFormatHandle fileFormat;  /* the registered format asked; may be null */
    int32_t option;                 /* kKVFileFormat...Option bits */
    KVFileFormatData data;
} KVFileFormatMessage;

#ifdef __cplusplus
}
#endif

#endif
