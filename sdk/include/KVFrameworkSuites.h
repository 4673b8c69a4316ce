/*
 * Host suites the plug-in framework uses: notifiers, application context,
 * indexed strings, alerts and dialogs, usage events and the host's own
 * resources.
 */
#ifndef KV_FRAMEWORK_SUITES_H
#define KV_FRAMEWORK_SUITES_H

#include "ZPTypes.h"

#ifdef __cplusplus
extern "C" {
#endif

#define kKVNotifierSuite "KV Notifier Suite"
#define kKVNotifierSuiteVersion 4
/* Sent when the host asks plug-ins to save their user data. */
#define kKVSaveUserDataNotifier "KV Save User Data Notifier"

typedef struct KVNotifierSuite {
    /* 0: register `plugin` for notifications of `type`; name is the
     * notifier's own name (copied). */
    ZPErr (ZPAPI *AddNotifier)(ZPPluginRef plugin, const char* name, const char* type,
                               KVNotifierHandle* notifier);
} KVNotifierSuite;

#define kKVContextSuite "KV Context Suite"
#define kKVContextSuiteVersion 10

/* The application context a plug-in enters while it handles a notification.
 * What the context means is the host's business. */
typedef struct KVContextSuite {
    ZPReservedFunction reserved0;
    /* 1: enter the plug-in's context; *context receives the token to leave it. */
    ZPErr (ZPAPI *PushAppContext)(ZPPluginRef plugin, KVAppContextHandle* context);
    /* 2: leave a context entered by PushAppContext. */
    ZPErr (ZPAPI *PopAppContext)(KVAppContextHandle context);
    ZPReservedFunction reserved3to11[9];
    /* 12: prepare *context for `plugin`; mode 1 is a notification. A non-zero
     * answer means the context must not be entered. */
    ZPErr (ZPAPI *PrepareAppContext)(KVAppContextHandle* context, ZPPluginRef plugin, int32_t mode);
} KVContextSuite;

#define kKVContextPrivateSuite "KV Context PrivateSuite"
#define kKVContextPrivateSuiteVersion 1

typedef struct KVContextPrivateSuite {
    ZPReservedFunction reserved0;
} KVContextPrivateSuite;

#define kUXKBasicSuite "UXK Basic Suite"
#define kUXKBasicSuiteVersion 13

typedef struct UXKBasicSuite {
    /* 0: string `index` (from 1) of the string list `listId` of `owner`,
     * as zero-terminated 8-bit text, cut to bufferSize - 1 bytes. An index
     * past the list's end answers kZPBadParameterErr and an empty buffer. */
    ZPErr (ZPAPI *GetIndexedString)(KVResourceOwner owner, int32_t listId, int32_t index,
                                    char* buffer, int32_t bufferSize);
} UXKBasicSuite;

#define kKVUserSuite "KV User Suite"
#define kKVUserSuiteVersion 21

typedef struct KVUserSuite {
    ZPReservedFunction reserved0to44[45];
    /* 45: ask the user a yes/no question; *yes is 1 for yes. */
    ZPErr (ZPAPI *QuestionAlert)(KVUnicodeStringRef message, ZPBoolean* yes);
    /* 46: show an error alert with the message. */
    ZPErr (ZPAPI *ErrorAlert)(KVUnicodeStringRef message);
} KVUserSuite;

#define kKVUserPrivateSuite "KV User Private Suite"
#define kKVUserPrivateSuiteVersion 1

typedef struct KVUserPrivateSuite {
    ZPReservedFunction reserved0to2[3];
    /* 3: an error dialog with a More Info button. helpKey is a localised
     * string whose text is the address of the help page the button opens;
     * number identifies the dialog. */
    ZPErr (ZPAPI *ErrorDialogWithMoreInfo)(KVUnicodeStringRef message, KVUnicodeStringRef helpKey,
                                           int32_t number);
} KVUserPrivateSuite;

#define kKVThreadPoolSuite "KV ThreadPool Suite"
#define kKVThreadPoolSuiteVersion 1

typedef struct KVThreadPoolSuite {
    ZPReservedFunction reserved0to4[5];
    /* 5: non-zero when a modal dialog may be shown now. */
    ZPBoolean (ZPAPI *CanShowModalDialog)(void);
} KVThreadPoolSuite;

#define kKVOrvikPIPSuite "KV OrvikPIP Suite"
#define kKVOrvikPIPSuiteVersion 1

typedef struct KVOrvikPIPSuite {
    /* 0: record a usage event; detail may be null. */
    ZPErr (ZPAPI *LogUsageEvent)(const char* category, const char* event, const char* detail);
} KVOrvikPIPSuite;

#define kLexoHostInitSuite "Lexo Host Init Suite"
#define kLexoHostInitSuiteVersion 1

typedef struct LexoHostInitSuite {
    /* 0: the owner of the host's own resources (string list 257). */
    ZPErr (ZPAPI *GetHostResourceOwner)(KVResourceOwner* owner);
} LexoHostInitSuite;

#ifdef __cplusplus
}
#endif

#endif
