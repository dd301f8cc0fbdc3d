/** @file
 * wirelines: decodes captured LAN frames into display lines.
 *
 * This header is the whole interface of libwirelines. It compiles as C99 and as C++20. Layouts and calls stay as they
 * are for as long as the library is libwirelines.so.0.
 *
 * In short: hand AnalyzeOutput one Ethernet frame and an empty LineList, read the DisplayLine records that it
 * appended, then free them with DelDspBuffer. Every line carries the bytes of the frame that it describes.
 *
 * Threads. The state of a decode belongs to the calling thread: several threads may each decode frames of their own at
 * the same time, one frame a thread at a time. A LineList belongs to one thread at a time; it may be handed to another
 * thread and freed there. The analysis settings (SetAnalyzeInfo) are shared by all threads.
 *
 * Errors. Nothing is thrown. When memory runs out ErrMessage(101) of the message module (vek4001.h) has been called,
 * the decode ends, and the lines made so far stay in the list and are valid. The same happens when one call has made
 * 1,000,000 lines, which only a frame made for it can need. There is no other error: a frame that makes no sense is
 * shown as far as it does, and the rest as a data block.
 *
 * Input. Any bytes of any length are accepted; a length below 0 has no bytes. A byte past the end of the data handed in
 * reads as zero and is never touched. The data is read during the call only and never changed. Pointers are not
 * checked: a null list is the caller's error; null data is fine where the length is 0.
 *
 * Units. Lengths and offsets are bytes. Offsets in lines count from the first byte of the frame, which is 0.
 *
 * Text. Line texts are zero-terminated bytes of at most 128 bytes: code page 932 (Shift-JIS) where a label is Japanese
 * or a data block is shown in a Japanese character set, otherwise the bytes of the frame as they stand. They may hold
 * control bytes; a host that writes to a terminal filters them. The texts and ranges of a protocol are not changed from
 * version to version, so a program may rely on them.
 */
#ifndef WIRELINES_H
#define WIRELINES_H

#include <stdint.h>

#if defined(__GNUC__) && !defined(_WIN32)
#define WIRELINES_API __attribute__((visibility("default")))
#else
#define WIRELINES_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Version ---------------------------------------------------------------------------------------------------- */

/** Returns the version of the library that is running, "0.1.0" for one: three numbers set apart by dots. Static text.
 */
WIRELINES_API const char* wirelines_version(void);

/* ---- Lines ------------------------------------------------------------------------------------------------------ */

/** One display line. Made by the library, freed by DelDspBuffer and by nothing else.
 *
 * The title codes: 10 frame header (MAC), 12 data link, 13 PPP packet, 14 PPPoE, 20 DNS, 23 NTP, 25 ARP and RARP, 29
 * NetBIOS, 31 DHCP and BOOTP, 32 TFTP, 34 SNMP, 36 IPX, 38 NCP, 40 SPX, 41 IPX RIP, 43 SAP, 45 IPv6, 46 ICMP and
 * ICMPv6, 47 IPv4, 48 TCP, 49 UDP, 51 IGMP, 53 RIP, 55 SMB command, 59 SMB header, and 0 for a data block. */
typedef struct DisplayLine {
  char* text;            /**< zero-terminated, at most 128 bytes, from GetLineBuf */
  uint32_t protocolCode; /**< a layer's title code (its title and its sub-headings) or title code + 63 (its fields);
                            0 and 63 for a data block; WIRELINES_BLANK for a blank line */
  uint32_t level;        /**< 0 title, 1 field, 2 detail below a field, WIRELINES_BLANK for a blank line */
  uint32_t startOffset;  /**< first byte of the frame that the line describes, counted from 0 */
  uint32_t endOffset;    /**< last byte, inclusive. 0 and 0, or twice 0xFFFFFFFF: the line describes no bytes */
  uint32_t styleIndex;   /**< display style of the layer within its family */
  uint32_t styleGroup;   /**< the layer's family: 9 link, 3 Internet and transports, 6 and 5 applications over IP,
                            4 NetWare, 2 SMB, 10 raw data, 0 none */
} DisplayLine;

/** protocolCode and level of a blank line. */
#define WIRELINES_BLANK 65535u

/** A growable array of pointers, owned by the host. All zero is an empty list. The library appends DisplayLine records
 * at index `count`; a host may read `data[0]` to `data[count - 1]` at any time between calls. A call that appends can
 * move `data`; the records themselves stay where they are until they are freed. */
typedef struct LineList {
  void** data;      /**< the elements, or null while nothing has been stored */
  int32_t count;    /**< elements in use */
  int32_t capacity; /**< elements that `data` has room for */
  int32_t growBy;   /**< elements to grow by; 0 or less: by half of what is there, at least 64 */
#ifdef __cplusplus
  /** LineListSetAtGrow. */
  inline int32_t SetAtGrow(int32_t index, void* element);
  /** LineListSetSize; a `newGrowBy` below 0 leaves the list's own. */
  inline int32_t SetSize(int32_t newSize, int32_t newGrowBy = -1);
#endif
} LineList;

/** Stores `element` at `index` (0 or more), growing the list when index is at or past its count; elements between the
 * old count and `index` become null. Returns 0, or 1 when memory is exhausted or `index` is negative; the list is then
 * unchanged. What was stored at `index` before is not freed. */
WIRELINES_API int32_t LineListSetAtGrow(LineList* list, int32_t index, void* element);

/** Makes the list `newSize` elements long; added elements are null, dropped ones are not freed. A `growBy` of 0 or more
 * replaces the list's own. Size 0 frees the storage. Returns 0, or 1 when memory is exhausted or `newSize` is
 * negative; the list is then unchanged. */
WIRELINES_API int32_t LineListSetSize(LineList* list, int32_t newSize, int32_t growBy);

/** Returns a new line buffer of 129 bytes, contents undefined, and counts one line in this thread's decode. Hand it on
 * to AddString, which takes it over: no other call frees it. Null when memory is exhausted; ErrMessage(101) has then
 * been called. */
WIRELINES_API char* GetLineBuf(void);

/** Appends one record. `text` is a buffer from GetLineBuf that holds a zero-terminated text; the list owns it from here
 * on, whatever comes back. Returns 0, or 1 when memory is exhausted: the text is then freed, the list unchanged, and
 * ErrMessage(101) has been called. */
WIRELINES_API int32_t AddString(LineList* list, char* text, uint32_t protocolCode, uint32_t level, uint32_t startOffset,
                                uint32_t endOffset, uint32_t styleIndex, uint32_t styleGroup);

/** Frees every record and its text, and the list's storage, passing over null elements; the list is empty afterwards
 * and can be used again. */
WIRELINES_API void DelDspBuffer(LineList* list);

/** Appends a blank line: empty text, code and level WIRELINES_BLANK, everything else 0. Returns what AddString returns,
 * or 0 when no buffer could be had. */
WIRELINES_API int32_t NewLine(LineList* list);

/** Appends a title: the zero-terminated `text` set at column 4 of a rule of 75 hyphens, one blank on each side. A text
 * of more than 70 bytes is cut. The other arguments are the words of the line. Returns what AddString returns, or 0
 * when no buffer could be had. */
WIRELINES_API int32_t DspTitle(LineList* list, const char* text, uint32_t protocolCode, uint32_t level,
                               uint32_t startOffset, uint32_t endOffset, uint32_t styleIndex, uint32_t styleGroup);

/** Returns `s` itself when it is empty, otherwise "(" s ")" in a buffer of the calling thread that the next call
 * overwrites. At most 117 bytes of `s` are taken. */
WIRELINES_API const char* AddParenthesis(const char* s);

/** Shows a zero-terminated text of at most `maxBytes` bytes after `label`, over as many lines as it needs: each line
 * takes (76 - length of the label) bytes of it, rounded down to an even number, and continuation lines begin with as
 * many blanks as the label has bytes. `startOffset` is the frame offset of the first byte of the text; every line's
 * range is that of the bytes it shows, the terminator included. A text that fills its last line exactly is followed by
 * a line of blanks for its terminator. Returns the bytes shown, without the terminator; 0, and no line, when
 * `maxBytes` is below 1. Reads at most `maxBytes` bytes. */
WIRELINES_API int32_t DspTitleString(LineList* list, const char* label, const char* string, int32_t maxBytes,
                                     uint32_t protocolCode, uint32_t level, uint32_t startOffset, uint32_t styleIndex,
                                     uint32_t styleGroup);

/** Keeps five words of analysis settings for the host. All threads share them, each word by itself; no decoder reads
 * them. */
WIRELINES_API void SetAnalyzeInfo(const uint32_t info[5]);

/** Copies out the five words that SetAnalyzeInfo kept; zeros before its first call. */
WIRELINES_API void GetAnalyzeInfo(uint32_t info[5]);

/* ---- Decoding --------------------------------------------------------------------------------------------------- */

/** Character sets in which data blocks show bytes as text. Any other value shows the bytes as they are. */
enum {
  WIRELINES_ASCII = 0,   /**< ASCII; other bytes show as a dot */
  WIRELINES_SJIS = 1,    /**< Shift-JIS, code page 932 */
  WIRELINES_JIS = 2,     /**< 7-bit JIS X 0208 byte pairs */
  WIRELINES_UNICODE = 3, /**< UTF-16, little-endian */
  WIRELINES_EUC = 4,     /**< EUC-JP */
  WIRELINES_EBCDIC = 5   /**< EBCDIC */
};

/** Decodes one Ethernet frame (destination address first, no preamble, no FCS) of `length` captured bytes and appends
 * its lines to `list`. Earlier lines stay in the list, so a host that shows one frame at a time frees them first
 * (DelDspBuffer). Every layer is decoded whose header is there, down to the application.
 *
 * timeWord0 above 0x100000 is the capture time in seconds since 1 January 1970 UTC, shown as local time, and timeWord1
 * the microseconds within that second. Otherwise timeWord1 alone gives date and time of day (see gdate_daytodmy; the
 * date of day number timeWord1, the time of timeWord1 milliseconds).
 *
 * Returns the index in the list, counted from the first line of this decode, of the title line of the innermost layer
 * that was decoded: where a host lets its view begin. 0 when only the frame header was shown or memory ran out in it.
 * A layer that was too short for its own title counts too: the line at the index is then another one, or the index is
 * that of the line after the last. */
WIRELINES_API uint32_t AnalyzeOutput(LineList* list, const uint8_t* frame, int32_t length, uint32_t timeWord0,
                                     uint32_t timeWord1, uint32_t charSetMode);

/** Dumps `length` bytes as hex lines of 16 bytes without decoding them; codes, levels, ranges and styles are all 0.
 * Returns 0. */
WIRELINES_API uint32_t HexOutput(LineList* list, const uint8_t* data, int32_t length, uint32_t charSetMode);

/** Appends hex lines of 16 bytes with the given attributes, in the character set of the last AnalyzeOutput or HexOutput
 * of this thread; its ASCII before the first. The line at block offset k with n bytes covers startOffset + k to
 * startOffset + k + n - 1; a startOffset of 0 makes every start 0, an endOffset of 0 every end 0. Nothing when `length`
 * is below 1. */
WIRELINES_API void HexDump(LineList* list, const uint8_t* data, int32_t length, uint32_t protocolCode, uint32_t level,
                           uint32_t startOffset, uint32_t endOffset, uint32_t styleIndex, uint32_t styleGroup);

/** Appends a data block, as the decoders do for bytes that no decoder takes: a blank line, a heading with the byte
 * count and the character set, and hex lines. Its range counts from the frame offset that this thread's last decode
 * left. Nothing when `length` is below 1. */
WIRELINES_API void UnKnownProtocol(LineList* list, const uint8_t* data, int32_t length);

/* ---- Data link -------------------------------------------------------------------------------------------------- */

/** Framings, as CheckFrameType returns them. */
enum {
  WIRELINES_RAW_802_3 = 1,   /**< NetWare's IPX straight behind the length field */
  WIRELINES_LLC = 2,         /**< IEEE 802.2, UI or I format */
  WIRELINES_SNAP = 3,        /**< IEEE 802.2 with SNAP header */
  WIRELINES_ETHERNET_II = 4, /**< type field above 1500 */
  WIRELINES_LLC_S_U = 5      /**< IEEE 802.2, S format or U format other than UI */
};

/** Returns the framing (WIRELINES_RAW_802_3 to WIRELINES_LLC_S_U) of a frame of which at least 17 bytes are readable:
 * the caller sees to that. Unless it is Ethernet II, stores byte 15 through `ssapOut` and byte 14 through `dsapOut`,
 * neither of them null. IEEE 802.3 and 802.2; RFC 1042 for SNAP. */
WIRELINES_API int32_t CheckFrameType(const uint8_t* frame, uint8_t* ssapOut, uint8_t* dsapOut);

/** Returns 1 and stores the protocol type of a frame of which at least 22 bytes are readable (the caller sees to that):
 * the EtherType, the SNAP protocol type, or DSAP x 256 + SSAP. Returns 0 and stores nothing when an LLC UI frame has
 * neither. */
WIRELINES_API int32_t GetProtocolType(const uint8_t* frame, uint16_t* typeOut);

/** Returns the static name of an EtherType as the IEEE and IANA registries list them, or "". */
WIRELINES_API const char* TypeToProtocolName(uint16_t etherType);

/* ---- Protocols -------------------------------------------------------------------------------------------------- */

/* Each of these decodes `length` bytes that begin with the header of its protocol and appends their lines, with those
 * of what it carries. Ranges count from the frame offset that this thread's last decode left, which is no frame's when
 * the host decodes a lone packet: HexOutput over no bytes makes it 0. Data that is too short for the header becomes a
 * data block. */

/** Decodes IPv4 (RFC 791) and what it carries: ICMP (RFC 792), IGMP (RFC 1112), TCP (RFC 9293), UDP (RFC 768) with its
 * applications, and IPv6. */
WIRELINES_API void IpAnalyze(LineList* list, const uint8_t* data, int32_t length);

/** Decodes ARP (RFC 826) or RARP (RFC 903) for Ethernet and IPv4; at least 28 bytes. */
WIRELINES_API void ArpAnalyze(LineList* list, const uint8_t* data, int32_t length);

/** Decodes IPX, the Internetwork Packet Exchange of NetWare, after Xerox' Internet Datagram Protocol (XSIS 028112).
 * What the header carries is cut to the packet's own length field; a packet that claims less than its header carries
 * nothing. */
WIRELINES_API void IpxAnalyze(LineList* list, const uint8_t* data, int32_t length);

/** Decodes IPv6 (RFC 8200) and what it carries. Of its extension headers only hop-by-hop options are taken apart. */
WIRELINES_API void Ip6Analyze(LineList* list, const uint8_t* data, int32_t length);

/** Decodes the discovery stage of PPP over Ethernet (RFC 2516), at least 6 bytes. The code in the header decides what
 * follows it, tags or a PPP packet, as with PPPSessionAnalyze; the two calls differ in title and least length only. */
WIRELINES_API void PPPoEDiscoveryAnalyze(LineList* list, const uint8_t* data, int32_t length);

/** Decodes the session stage of PPP over Ethernet (RFC 2516), at least 8 bytes, with what PPP carries: LCP (RFC 1661),
 * IPCP (RFC 1332), PAP (RFC 1334), CHAP (RFC 1994) and IPv4. A PPP packet is taken to be as long as the data, whatever
 * the header says. LCP packets of less than 16 bytes, and others of less than 4, show nothing. */
WIRELINES_API void PPPSessionAnalyze(LineList* list, const uint8_t* data, int32_t length);

/* ---- Classification --------------------------------------------------------------------------------------------- */

/** What a frame carries, in 90 bytes without padding. Numbers are in the machine's byte order, addresses in the order
 * of the frame. A field is written only where its layer was found: all others, the reserved bytes among them, keep what
 * the host put there. Checksum errors are added with OR. */
#pragma pack(push, 1)
typedef struct PacketSummary {
  uint32_t frameKind;       /**< CheckFrameType's framing, or 0 for a frame of less than 17 bytes */
  uint8_t dsap;             /**< byte 14; not written for Ethernet II */
  uint8_t ssap;             /**< byte 15; likewise */
  uint16_t etherType;       /**< Ethernet II type or SNAP protocol type */
  uint32_t networkCode;     /**< WIRELINES_NET_..., or 0 */
  uint8_t ipProtocol;       /**< IPv4 protocol, last IPv6 next-header value seen, or IPX packet type */
  uint8_t dstIp[4];         /**< IPv4 destination, or target protocol address of ARP and RARP */
  uint8_t dstIp6[16];       /**< IPv6 destination */
  uint8_t reserved1;        /**< never written */
  uint16_t dstPort;         /**< TCP or UDP; 0 for IPv4 fragments and other IPv6 payloads */
  uint16_t srcPort;         /**< likewise */
  uint8_t srcIp[4];         /**< IPv4 source, or sender protocol address of ARP and RARP */
  uint8_t srcIp6[16];       /**< IPv6 source */
  uint8_t ipxDstNet[4];     /**< IPX destination network */
  uint8_t ipxDstNode[6];    /**< IPX destination node */
  uint16_t ipxDstSocket;    /**< IPX destination socket */
  uint8_t ipxSrcNet[4];     /**< IPX source network */
  uint8_t ipxSrcNode[6];    /**< IPX source node */
  uint16_t ipxSrcSocket;    /**< IPX source socket */
  uint8_t typeCode;         /**< TCP flags, ICMP or ICMPv6 type, low byte of the ARP or RARP operation, or PPPoE
                               discovery code */
  uint8_t reserved2;        /**< never written */
  uint16_t networkOffset;   /**< of the network header in the frame; IPv4 and IPv6 only */
  uint16_t transportOffset; /**< of the transport header; see CheckIp and CheckIpV6 */
  uint8_t reserved3;        /**< never written */
  uint8_t errorFlags;       /**< WIRELINES_BAD_... */
} PacketSummary;
#pragma pack(pop)

/** Values of networkCode. */
enum {
  WIRELINES_NET_IP = 0x1001,          /**< IPv4 */
  WIRELINES_NET_IP_FRAGMENT = 0x1002, /**< IPv4, with a fragment offset other than 0 */
  WIRELINES_NET_ARP = 0x1003,         /**< ARP */
  WIRELINES_NET_RARP = 0x1004,        /**< RARP */
  WIRELINES_NET_IPX = 0x1005,         /**< IPX */
  WIRELINES_NET_NETBIOS = 0x1006,     /**< NetBIOS frames over LLC */
  WIRELINES_NET_XNS = 0x1007,         /**< Xerox Network Systems */
  WIRELINES_NET_APPLETALK = 0x1008,   /**< AppleTalk */
  WIRELINES_NET_AARP = 0x1009,        /**< AppleTalk ARP */
  WIRELINES_NET_IP6 = 0x100A,         /**< IPv6 */
  WIRELINES_NET_PPPOE = 0x1201,       /**< discovery, or a session with a protocol not named here */
  WIRELINES_NET_LCP = 0x1202,         /**< LCP in a PPPoE session */
  WIRELINES_NET_CHAP = 0x1203,        /**< CHAP, likewise */
  WIRELINES_NET_PAP = 0x1204,         /**< PAP, likewise */
  WIRELINES_NET_IPCP = 0x1205         /**< IPCP, likewise */
};

/** Bits of errorFlags: 0x80 with any error, and one bit each. */
enum {
  WIRELINES_BAD_IP = 0x81,   /**< IPv4 header checksum */
  WIRELINES_BAD_ICMP = 0x82, /**< ICMP or ICMPv6 */
  WIRELINES_BAD_TCP = 0x84,  /**< TCP */
  WIRELINES_BAD_UDP = 0x88   /**< UDP */
};

/* The classifiers make no line, take no memory and leave the state of a decode alone; any thread may call them at any
 * time. Each is given `length` readable bytes and a record of the host's. Checksums are those of RFC 1071; a checksum
 * field of 0 is not verified, except ICMP's (RFC 792). */

/** Classifies a frame from its destination address on. Zeroes frameKind, networkCode, ipProtocol,
 * networkOffset and transportOffset first, then fills in what it finds. A host that counts errors zeroes errorFlags
 * before each call. Of a frame of less than 17 bytes nothing is looked at. */
WIRELINES_API void CheckPacket(const uint8_t* frame, int32_t length, PacketSummary* summary);

/** Classifies IPv4 (RFC 791), at least 20 bytes; nothing is written for less. Writes addresses and protocol and adds
 * the header length to transportOffset. A fragment has ports 0 and no transport error; one with an offset other than 0
 * gets networkCode WIRELINES_NET_IP_FRAGMENT and nothing more. TCP (RFC 9293): ports, flags, error; UDP (RFC 768):
 * ports, error; ICMP: type, error; each where its 20, 8 or 4 bytes are there. IPv6 (protocol 41, RFC 4213):
 * networkCode, then as CheckIpV6, the header length being added to networkOffset once and to transportOffset a second
 * time. */
WIRELINES_API void CheckIp(const uint8_t* header, int32_t length, PacketSummary* summary);

/** Classifies IPv6 (RFC 8200), at least 40 bytes; nothing is written for less. Writes addresses, zeroes the ports, adds
 * 40 to transportOffset and follows hop-by-hop options, whose length transportOffset does not count. ipProtocol is the
 * last next-header value seen. TCP and UDP as over IPv4; ICMPv6 (RFC 4443), at least 4 bytes: type, error. An error of
 * UDP or ICMPv6 is told where the checksums of message and pseudo header (RFC 8200, 8.1) together are below 65535. */
WIRELINES_API void CheckIpV6(const uint8_t* header, int32_t length, PacketSummary* summary);

/** Classifies IPX: packet type into ipProtocol, and both addresses. Missing bytes read zero. */
WIRELINES_API void CheckIpx(const uint8_t* header, int32_t length, PacketSummary* summary);

/** Classifies a PPPoE session (RFC 2516) from its PPPoE header on, at least 8 bytes: networkCode for LCP, CHAP, PAP and
 * IPCP (RFC 1661, 1994, 1334, 1332), or that of IPv4 and then as CheckIp. */
WIRELINES_API void CheckPppSession(const uint8_t* header, int32_t length, PacketSummary* summary);

/* ---- Addresses -------------------------------------------------------------------------------------------------- */

/* Each of these writes the 16-byte IPv6 address at `address` as a zero-terminated text with upper-case digits into the
 * host's buffer `out`. */

/** Writes all eight groups without leading zeros, "FE80:0:0:0:202:B3FF:FE1E:8329", into 40 bytes of room. */
WIRELINES_API void FormatIp6Addr(char* out, const uint8_t* address);

/** Writes the interface identifier (RFC 4291) only, always 19 characters, "0202:B3FF:FE1E:8329", into 20 bytes of room.
 */
WIRELINES_API void FormatIp6AddrSimple(char* out, const uint8_t* address);

/** Writes the address with its first run of zero groups compressed, even a run of one, into 40 bytes of room; later
 * zero groups are shown. Unlike RFC 5952, an address that begins with zeros has one colon there: ::1 gives ":1". All
 * zeros give "::". The result has no meaning. */
WIRELINES_API int32_t FormatIp6AddrSimple2(char* out, const uint8_t* address);

/* ---- Checksums -------------------------------------------------------------------------------------------------- */

/** Returns the Internet checksum (RFC 1071): the one's complement of the one's-complement sum of `length` bytes as
 * big-endian words; an odd last byte counts as a word that ends with a zero byte. 0 to 65535; 0 when the data includes
 * its own right checksum. A length below 1 sums nothing. */
WIRELINES_API uint32_t IpCheckSum(const uint8_t* data, int32_t length);

/** Returns the same over a pseudo header (12 bytes for IPv4, RFC 793 and 768; 40 bytes for IPv6, RFC 8200) followed by
 * a TCP or UDP message. */
WIRELINES_API uint32_t CulUdpChksum(const uint8_t* message, int32_t length, const uint8_t* pseudoHeader,
                                    int32_t pseudoLength);

/** Fills the 12 bytes at `pseudoOut` with the pseudo header of a datagram of whose IPv4 header 20 bytes are readable:
 * both addresses, a zero byte, the protocol, and the total length less the header length (modulo 65536). */
WIRELINES_API void IpPsuadoHeder(const uint8_t* header, uint8_t* pseudoOut);

/* ---- Names ------------------------------------------------------------------------------------------------------ */

/* Each of these returns a static text, which nobody frees. */

/** Returns the name of an IP protocol or IPv6 next header (IANA numbers), or "". */
WIRELINES_API const char* IpProtocolToName(uint8_t protocol);

/** Returns the name of an IPX packet type, or "". */
WIRELINES_API const char* NwPacketToName(uint8_t packetType);

/** Returns the name of an IPX socket, or "". */
WIRELINES_API const char* NwSocketToName(uint16_t socket);

/** Returns the name of an ICMP type (RFC 792, 950, 1256), or "". */
WIRELINES_API const char* IcmpTypeInfoToName(uint8_t type);

/** Returns the name of an ICMPv6 type (RFC 4443, 2710, 4861), or "". */
WIRELINES_API const char* IcmpV6TypeInfoToName(uint8_t type);

/** Returns the static name of a PPPoE code (RFC 2516), or "Unknown". */
WIRELINES_API const char* PPPSessionToName(uint8_t code);

/** Returns the name of a port: the user's own if the name module has one (at most 35 bytes, in a buffer of the calling
 * thread that the next call overwrites), otherwise the registered keyword in upper case, which can differ between TCP
 * (`protocol` 6) and UDP (17), or "". Ports as the IANA registry lists them. */
WIRELINES_API const char* PortToName(uint16_t port, uint8_t protocol);

/* ---- Calendar --------------------------------------------------------------------------------------------------- */

/* Day numbers count from 0, which is 1 January of year 1. A year is a leap year when its number is divisible by 4 and
 * not by 100, or by 400. The time line of a frame adds 1996 to the year. */

/** Stores the year (from 1), month (1 to 12) and day (1 to 31) of a day number. A null pointer is skipped. */
WIRELINES_API void gdate_daytodmy(uint32_t dayNumber, uint32_t* yearOut, uint32_t* monthOut, uint32_t* dayOut);

/** Returns the day number of a date: the year from 1, the month 1 to 12, the day from 1. A day past the end of its
 * month counts on into the next. */
WIRELINES_API uint32_t gdate_dmytoday(uint32_t year, uint32_t month, uint32_t day);

/** Returns the days of a month; 0 for a month outside 1 to 12. */
WIRELINES_API uint32_t gdate_monthdays(uint32_t month, uint32_t year);

/** Returns the day of the week, 0 for Sunday to 6: (dayNumber + 1) modulo 7. */
WIRELINES_API uint32_t gdate_weekday(uint32_t dayNumber);

#ifdef __cplusplus
}

/** @cond the members are described where they are declared */
inline int32_t LineList::SetAtGrow(int32_t index, void* element) {
  return LineListSetAtGrow(this, index, element);
}
inline int32_t LineList::SetSize(int32_t newSize, int32_t newGrowBy) {
  return LineListSetSize(this, newSize, newGrowBy);
}
/** @endcond */
#endif

#endif /* WIRELINES_H */
