/* vek4003: the name module. It knows the names that a user gave to stations, addresses, ports, SAPs and EtherTypes.
 *
 * libwirelines calls the six look-ups and nothing else; a host may put a library of its own under this name instead.
 * Everything here is looked up in memory; nothing ever asks a network.
 *
 * Threads. Look-ups may run on any number of threads at once, also while another thread changes the names. */
#ifndef VEK4003_H
#define VEK4003_H

#include <stdint.h>

#if defined(_WIN32)
#define VEK4003_API __declspec(dllimport)
#elif defined(__GNUC__)
#define VEK4003_API __attribute__((visibility("default")))
#else
#define VEK4003_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* The look-ups. Each takes a key as text and a buffer, and returns 1 with the zero-terminated name in the buffer, or 0
 * with the buffer untouched. Names are at most 31 bytes for stations (buffer of 32) and 35 for the others (buffer of
 * 36). */

VEK4003_API int32_t StationToNickName(const char *address, char *nameOut);  /* "0123456789AB" */
VEK4003_API int32_t IpStrToNickName(const char *address, char *nameOut);    /* "192.0.2.1" */
VEK4003_API int32_t Ip6StrToNickName(const char *address, char *nameOut);   /* see NickNameAdd on the text form */
VEK4003_API int32_t PortStrToNickName(const char *port, char *nameOut);     /* "80" */
VEK4003_API int32_t SapToName(const char *dsap, const char *ssap, char *nameOut); /* "E0", "E0" */
VEK4003_API int32_t ProtocolTypeToName(const char *type, char *nameOut);    /* "0800" */

/* Kinds of names. */
typedef enum NickNameKind {
  NICKNAME_STATION, /* key: MAC address, twelve hexadecimal digits, or six pairs set apart by ':' '-' or '.' */
  NICKNAME_IP,      /* key: IPv4 address in dotted decimal */
  NICKNAME_IP6,     /* key: IPv6 address in any usual text form */
  NICKNAME_PORT,    /* key: port number in decimal, 0 to 65535 */
  NICKNAME_SAP,     /* key: DSAP and SSAP, four hexadecimal digits, or two pairs set apart by '/' */
  NICKNAME_TYPE     /* key: EtherType, one to four hexadecimal digits, with or without "0x" */
} NickNameKind;

/* Formats of name files. */
typedef enum NickNameFormat {
  NICKNAME_OWN,     /* "kind key name" a line, kind being station, ip, ip6, port, sap or type */
  NICKNAME_HOSTS,   /* "address name [alias...]": IPv4 and IPv6; the first name counts */
  NICKNAME_ETHERS,  /* "mac name" */
  NICKNAME_SERVICES /* "name port/protocol [alias...]"; the first name of a port counts */
} NickNameFormat;

/* Told of a line that could not be used: the file, the line number counted from 1 (0: the file itself could not be
 * read or written), the reason, and the caller's `context`. The texts are valid during the call only. */
typedef void (*NickNameProblem)(const char *file, int32_t line, const char *reason, void *context);

/* Reads a file of names; in every format '#' begins a comment. A name that is there already for its key is replaced,
 * so the file read last wins. A bad line is told to `problem` (may be null) and the rest is still read. Returns the
 * number of names taken, or -1 when the file could not be read. */
VEK4003_API int32_t NickNameLoad(const char *file, NickNameFormat format, NickNameProblem problem, void *context);

/* Gives `key` the name `name`; an earlier name is replaced. Keys are accepted in the forms of NickNameKind and made
 * one: IPv6 keys match the text that the decoder shows. Returns null, or why the key or the name cannot be used
 * (static text). */
VEK4003_API const char *NickNameAdd(NickNameKind kind, const char *key, const char *name);

/* Forgets the name of `key`. Returns 1, or 0 when it had none. */
VEK4003_API int32_t NickNameRemove(NickNameKind kind, const char *key);

/* Forgets all names. */
VEK4003_API void NickNameClear(void);

/* Calls `visit` for every name, by kind and then by key, until it returns 0. The texts are valid during the call only;
 * `visit` must not change the names. */
typedef int32_t (*NickNameVisit)(NickNameKind kind, const char *key, const char *name, void *context);
VEK4003_API void NickNameEach(NickNameVisit visit, void *context);

/* Writes all names to `file` in the format NICKNAME_OWN: to a new file beside it first, which then takes its place, so
 * that the file is never seen half written and keeps its permissions. Returns null, or why it failed (static text, or
 * the calling thread's until its next call). */
VEK4003_API const char *NickNameSave(const char *file);

#ifdef __cplusplus
}
#endif

#endif /* VEK4003_H */
