/** @file
 * vek4001: the message module. It tells the user what went wrong, by code.
 *
 * libwirelines calls ErrMessage and nothing else; a host may put a library of its own under this name instead.
 *
 * Threads. Both functions may run on any number of threads at once. */
#ifndef VEK4001_H
#define VEK4001_H

#include <stdint.h>

#if defined(_WIN32) && defined(vek4001_EXPORTS) /* while the module itself is built */
#define VEK4001_API __declspec(dllexport)
#elif defined(__GNUC__) && !defined(_WIN32)
#define VEK4001_API __attribute__((visibility("default")))
#else
#define VEK4001_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** Codes of messages. */
enum {
  VEK4001_OUT_OF_MEMORY = 101 /**< memory is exhausted; the decode that met it ends */
};

/** Receives a message: its code, its text (zero-terminated, one line without its end, valid during the call only) and
 * the `context` that was handed to SetErrMessageHandler. Called on the thread that met the error, on several at once
 * when several met one; may call this module; must not throw. */
typedef void (*ErrMessageHandler)(int32_t code, const char* text, void* context);

/** Shows the message of `code`: to the handler when one is set, otherwise as one line on standard error. An unknown
 * code is shown by its number. Allocates nothing, so that it works when memory is exhausted. */
VEK4001_API void ErrMessage(int32_t code);

/** Sends messages to `handler` from now on, for all threads; null goes back to standard error. The earlier handler may
 * still be at work on another thread when this returns: its context has to stay good until those threads are done. */
VEK4001_API void SetErrMessageHandler(ErrMessageHandler handler, void* context);

#ifdef __cplusplus
}
#endif

#endif /* VEK4001_H */
