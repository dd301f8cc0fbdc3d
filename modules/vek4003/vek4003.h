/** @file
 * vek4003: the name module. It knows the names that a user gave to stations, addresses, ports, SAPs and EtherTypes.
 *
 * libwirelines calls the six look-ups and nothing else. A host with names of its own defines all six look-ups in its
 * program, which are then taken instead of the ones here (not from a DLL of Windows), or puts a library of its own
 * under this name. Everything here is looked up in memory; nothing ever asks a network.
 *
 * Threads. Every function may run on any number of threads at once; a look-up gives a name as it was before or after
 * another thread's change, never a mixture. Callbacks are called on the caller's thread with no lock held, so they may
 * use this module too; they must not throw. */
#ifndef VEK4003_H
#define VEK4003_H

#include <stdint.h>

#if defined(_WIN32) && defined(vek4003_EXPORTS) /* while the module itself is built */
#define VEK4003_API __declspec(dllexport)
#elif defined(__GNUC__) && !defined(_WIN32)
#define VEK4003_API __attribute__((visibility("default")))
#else
#define VEK4003_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* The look-ups. Each takes a key as text and a buffer, and returns 1 with the zero-terminated name in the buffer, or 0
 * with the buffer untouched. Names are at most 31 bytes for stations (buffer of 32) and 35 for the others (buffer of
 * 36). A look-up allocates nothing, and while there is no name of its kind it costs next to nothing. The decoder asks
 * with the texts shown here; the other forms of NickNameKind are understood too. */

/** Looks up a station by its MAC address, "0123456789AB"; 32 bytes of room. */
VEK4003_API int32_t StationToNickName(const char* address, char* nameOut);
/** Looks up an IPv4 address, "192.0.2.1"; 36 bytes of room, as for all below. */
VEK4003_API int32_t IpStrToNickName(const char* address, char* nameOut);
/** Looks up an IPv6 address, "FE80:0:0:0:0:0:0:1" or "FE80::1". */
VEK4003_API int32_t Ip6StrToNickName(const char* address, char* nameOut);
/** Looks up a TCP or UDP port, "80". */
VEK4003_API int32_t PortStrToNickName(const char* port, char* nameOut);
/** Looks up a pair of LLC service access points, "E0" and "E0". */
VEK4003_API int32_t SapToName(const char* dsap, const char* ssap, char* nameOut);
/** Looks up an EtherType, "0800". */
VEK4003_API int32_t ProtocolTypeToName(const char* type, char* nameOut);

/** Kinds of names, and the forms of their keys; letters count alike in either case. */
typedef enum NickNameKind {
  NICKNAME_STATION, /**< MAC address: twelve hexadecimal digits, or six groups of one or two set apart by ':' '-' '.' */
  NICKNAME_IP,      /**< IPv4 address in dotted decimal */
  NICKNAME_IP6,     /**< IPv6 address in any usual text form, or as the decoder shows it (":1" for "::1") */
  NICKNAME_PORT,    /**< port number in decimal, 0 to 65535, without leading zeros */
  NICKNAME_SAP,     /**< DSAP and SSAP: four hexadecimal digits, or two pairs set apart by '/' */
  NICKNAME_TYPE     /**< EtherType: one to four hexadecimal digits, with or without "0x" */
} NickNameKind;

/** Formats of name files, a name a line. In our own, kind is station, ip, ip6, port, sap or type, and the name is the
 * rest of the line and may hold blanks. Of services, tcp and udp count alike, and other protocols are passed over. */
typedef enum NickNameFormat {
  NICKNAME_OWN,     /**< "kind key name" */
  NICKNAME_HOSTS,   /**< "address name [alias...]", IPv4 and IPv6 */
  NICKNAME_ETHERS,  /**< "mac name" */
  NICKNAME_SERVICES /**< "name port/protocol [alias...]" */
} NickNameFormat;

/** Told of a line that could not be used: the file, the line number counted from 1 (0: the file itself could not be
 * read), the reason, and the caller's `context`. The texts are valid during the call only. */
typedef void (*NickNameProblem)(const char* file, int32_t line, const char* reason, void* context);

/** Reads a file of names: blanks and tabs between words, either kind of line end, lines of at most 8192 bytes. '#'
 * begins a comment, in our own format only at the start of a line or after a blank. A name that is there already for
 * its key is replaced, so the file read last wins; within a file the last line of a key counts in our own format, and
 * the first one in the others, as the system reads them. A bad line is told to `problem` (may be null) and the rest is
 * still read. Returns the number of names taken, or -1 when the file could not be read to its end or memory is
 * exhausted; then `problem` is told why and no name is taken. */
VEK4003_API int32_t NickNameLoad(const char* file, NickNameFormat format, NickNameProblem problem, void* context);

/** Gives `key` the name `name`; an earlier name is replaced. Keys are accepted in the forms of NickNameKind and made
 * one. A name is any bytes, UTF-8 for one, but no control bytes; not empty, not longer than the look-ups say, not with
 * a blank at either end, and without a '#' at its start or after a blank, where a file would take it for a comment.
 * Returns null, or why the key or the name cannot be used (static text). */
VEK4003_API const char* NickNameAdd(NickNameKind kind, const char* key, const char* name);

/** Forgets the name of `key`. Returns 1, or 0 when it had none. */
VEK4003_API int32_t NickNameRemove(NickNameKind kind, const char* key);

/** Forgets all names. */
VEK4003_API void NickNameClear(void);

/** Told of one name by NickNameEach; returns 0 to end the walk. */
typedef int32_t (*NickNameVisit)(NickNameKind kind, const char* key, const char* name, void* context);

/** Calls `visit` for every name, by kind and then by the number that the key stands for, until it returns 0. The texts
 * are valid during the call only; the key is in the form that files are saved with: "0123456789AB", "192.0.2.1",
 * "fe80::1", "80", "E0E0", "0800". The names are those of the moment of the call, whatever `visit` changes. Returns 1,
 * or 0 when memory is exhausted and nothing was visited. */
VEK4003_API int32_t NickNameEach(NickNameVisit visit, void* context);

/** Writes all names to `file` in the format NICKNAME_OWN: to a new file beside it first, which then takes its place, so
 * that the file is never seen half written and keeps its permissions; of a symbolic link the file at its end is
 * replaced. Comments that the file held are lost. Returns null, or why it failed (static text, or the calling thread's
 * until its next call); then the file is as it was. */
VEK4003_API const char* NickNameSave(const char* file);

#ifdef __cplusplus
}
#endif

#endif /* VEK4003_H */
