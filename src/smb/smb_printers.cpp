// Field lines of SMB commands that take more than one format: flags, times, areas.
#include "smb/smb_printers.hpp"

#include <algorithm>

#include "core/calendar.hpp"
#include "core/names.hpp"

namespace wirelines::smb {

namespace {

constexpr BitRow kDosAttributes[] = {
    {5, "    [bit5] Archive = %u"}, {4, "    [bit4] Directory = %u"}, {3, "    [bit3] Volume = %u"},
    {2, "    [bit2] System = %u"},  {1, "    [bit1] Hidden = %u"},    {0, "    [bit0] Read Only = %u"},
};

constexpr BitRow kExtendedAttributes[] = {
    {31, "    [bit31] Write Through = %u"},
    {29, "    [bit29] No Buffering = %u"},
    {28, "    [bit28] Random Access = %u"},
    {27, "    [bit27] Sequential Scan = %u"},
    {26, "    [bit26] Delete on Close = %u"},
    {25, "    [bit25] Backup = %u"},
    {24, "    [bit24] Posix = %u"},
    {14, "    [bit14] Encrypted = %u"},
    {13, "    [bit13] Content Indexed = %u"},
    {12, "    [bit12] Offline = %u"},
    {11, "    [bit11] Compressed = %u"},
    {10, "    [bit10] Repares Point = %u"},
    {9, "    [bit9] Spares = %u"},
    {8, "    [bit8] Temporary = %u"},
    {7, "    [bit7] Normal = %u"},
    {6, "    [bit6] Device = %u"},
    {5, "    [bit5] Archive = %u"},
    {4, "    [bit4] Directory = %u"},
    {3, "    [bit3] Volume ID = %u"},
    {2, "    [bit2] System = %u"},
    {1, "    [bit1] Hidden = %u"},
    {0, "    [bit0] Read Only = %u"},
};

constexpr BitRow kWriteMode[] = {
    {7, "    [bit7] Connectionless = %u"},   {3, "    [bit3] Message Start = %u"}, {2, "    [bit2] Write Raw = %u"},
    {1, "    [bit1] Return Remaining = %u"}, {0, "    [bit0] Write Through = %u"},
};

constexpr BitRow kCapabilities[] = {
    {9, "    [bit9] NT FIND = %u"}, {7, "    [bit7] LEVEL2 OPLOCKS = %u"}, {6, "    [bit6] STATUS32 = %u"},
    {4, "    [bit4] NT SMBS = %u"}, {3, "    [bit3] LARGE FILES = %u"},    {2, "    [bit2] UNICODE = %u"},
};

constexpr auto kReferenceModes = names(
    {
        {1, "Sequential Access"},
        {2, "Random Access"},
        {3, "Random Access with some Locality"},
    },
    "Unknown");

constexpr auto kSharingModes = names(
    {
        {0, "Compatibility mode"},
        {1, "Deny Read/Wite/Execute"},
        {2, "Deny Write"},
        {3, "Deny Wite/Execute"},
        {4, "Deny None"},
    },
    "Unknown");

constexpr auto kAccessModes = names({{0, "Read"}, {1, "Write"}, {2, "Read/Write"}, {3, "Execute"}}, "Unknown");

constexpr auto kOpenActions = names({{1, "Open file"}, {2, "Truncate file"}}, "Fail");

constexpr auto kFileTypes = names(
    {
        {0, "Disk file or directory"},
        {1, "Named pipe in byte mode"},
        {2, "Named pipe in message mode"},
        {3, "Spool printer"},
        {4, "Communication device"},
    },
    "Unknown");

constexpr auto kPipeTypes = names({{0, "Byte stream pipe"}, {1, "Message pipe"}}, "Unknown");
constexpr auto kReadModes =
    names({{0, "Read as a byte stream"}, {1, "Messages are to be read from the pipe"}}, "Unknown");

constexpr auto kBufferFormats = names(
    {
        {1, "Data block"},
        {2, "Dialect"},
        {3, "Pathname"},
        {4, "ASCII"},
        {5, "Variable Block"},
    },
    "Unknown");

static_assert(kReferenceModes.distinct() && kSharingModes.distinct() && kAccessModes.distinct() &&
              kFileTypes.distinct() && kBufferFormats.distinct());

constexpr bool is_pipe(uint16_t file_type) {
  return file_type == 1 || file_type == 2;
}

}  // namespace

void DspTimeout(Fields& f) {
  const uint32_t v = f.le32();
  if (v == 0xFFFFFFFF) return f.line("[Timeout] 0x%0.8X (Forever)", v);
  f.line("[Timeout] %u (0x%0.8X) msec", v, v);
}

DateTime date_time(uint32_t seconds) {
  // Kept: the calendar of the frame header's day numbers, which begins with its own year 1, so that leap days fall in
  // 1973, 1977 and so on.
  const Date date = date_of_day(seconds / 86400);
  return {date.month, date.day, date.year + 1969, seconds % 86400 / 3600, seconds % 3600 / 60, seconds % 60};
}

DateTime local_date_time(uint64_t file_time) {
  const std::tm* const t = local_time(static_cast<int64_t>(file_time / 10'000'000) - 11'644'473'600);
  if (t == nullptr) return {};
  const auto number = [](int v) { return static_cast<uint32_t>(v); };
  return {number(t->tm_mon + 1), number(t->tm_mday), number(t->tm_year + 1900),
          number(t->tm_hour),    number(t->tm_min),  number(t->tm_sec)};
}

void DspLastWrite(Fields& f) {
  const uint32_t seconds = f.le32();
  if (seconds == 0 || seconds == 0xFFFFFFFF) return f.line("[Last Write] 0x%0.8X", seconds);
  const DateTime t = date_time(seconds);
  f.line("[Last Write] %0.2u/%0.2u/%u %0.2u:%0.2u:%0.2u", t.month, t.day, t.year, t.hour, t.minute, t.second);
}

uint16_t DspFileType(Fields& f) {
  const uint16_t type = f.le16();
  f.line("[File Type] %u (%s)", type, kFileTypes(type));
  return type;
}

void DspDeviceState(Fields& f, uint16_t file_type) {
  const uint16_t v = f.le16();
  if (!is_pipe(file_type)) return f.line("[Device State] 0x%0.4X", v);
  const uint32_t pipe_type = v >> 10 & 3;
  const uint32_t read_mode = v >> 8 & 3;
  f.heading("[IPC State] 0x%0.4X", v);
  // Kept: the labels say bits 31 and 30 for bits 15 and 14.
  f.detail("    [bit31] Blocking = %u (%s) ", v >> 15 & 1,
           (v >> 15 & 1) != 0 ? "Reads/writes return immediately" : "Reads/writes block");
  f.detail("    [bit30] EndPoint = %u (%s) ", v >> 14 & 1,
           (v >> 14 & 1) != 0 ? "Server end of pipe" : "Consumer end of pipe");
  f.detail("    [bit11-10] PipeType = %u (%s)", pipe_type, kPipeTypes(pipe_type));
  f.detail("    [bit9-8] ReadMode = %u (%s) ", read_mode, kReadModes(read_mode));
  f.detail("    [bit7-0] Icount = %u ", v & 0xFF);
}

void DspFileAttributes(Fields& f) {
  f.flags16("[File Attributes] 0x%0.4X", kDosAttributes);
}

void DspExtendedFileAttributes(Fields& f) {
  f.flags32("[File Attributes] 0x%0.8X", kExtendedAttributes);
}

void DspDesiredAccess(Fields& f) {
  const uint16_t v = f.le16();
  const uint32_t reference = v >> 8 & 7;
  const uint32_t sharing = v >> 4 & 7;
  const uint32_t access = v & 7;
  f.heading("[Desired Access] 0x%0.4X", v);
  f.detail("    [bit14] Write through Mode = %s", (v >> 14 & 1) != 0 ? "1 (Disabled)" : "0 (Enabled)");
  f.detail("    [bit12] Cach Mode = %s", (v >> 12 & 1) != 0 ? "1 (Do not Cache)" : "0 (Caching Permitted)");
  f.detail("    [bit10-8] Reference Mode = %u (%s)", reference, kReferenceModes(reference));
  f.detail("    [bit6-4] Sharing Mode = %u (%s)", sharing, kSharingModes(sharing));
  f.detail("    [bit2-0] Access Mode = %u (%s)", access, kAccessModes(access));
}

void DspOpenFunctionBits(Fields& f, uint16_t v) {
  const uint32_t create = v >> 4 & 1;
  const uint32_t open = v & 3;
  f.detail("    [bit4] Create = %u (%s if it does not exist)", create, create != 0 ? "Create file" : "Fail");
  f.detail("    [bit1-0] Open = %u (%s if it exists)", open, kOpenActions(open));
}

void DspWriteMode(Fields& f) {
  f.flags16("[Write Mode] 0x%0.4X", kWriteMode);
}

void DspCapabilities(Fields& f) {
  f.flags32("[Capabilities] 0x%0.8X", kCapabilities);
}

void DspBufferFormat(Fields& f) {
  if (!f.more()) return;
  const uint8_t v = f.u8();
  f.line("[Buffer Format] %u (%s)", v, kBufferFormats(v));
}

void DspEncryptionKey(Fields& f, uint32_t length) {
  const Bytes key = f.area(length);
  if (key.size() == 0) return;
  f.heading("[Encryption Key] %u (0x%0.4X) byte(s)", key.size(), key.size());
  f.data_lines(key);
}

uint16_t DspSecurityBlobLength(Fields& f) {
  const uint16_t length = f.le16();
  // Kept: over the first byte of its field alone.
  f.section().value(at(f.last().first), "[Security Blob Length] %u (0x%0.4X) byte(s)", length);
  return length;
}

void DspSecurityBlob(Fields& f, uint32_t length) {
  const Bytes blob = f.area(length);
  if (blob.size() == 0) return f.section().absent("[Security Blob] None");
  f.heading("[Security Blob] %u (0x%0.4X) byte(s)", blob.size(), blob.size());
  f.hex_lines(blob);
}

void DspCountedData(Fields& f) {
  if (!f.more()) return;
  const uint16_t length = DspDataLength(f);
  f.data_lines(f.area(length));
}

void DspDataAt(Fields& f, uint32_t offset, uint32_t length) {
  const int64_t begin = std::max<int64_t>(offset - f.position(), f.offset());
  if (begin >= f.size()) return;
  const uint32_t before = f.offset();
  f.seek(static_cast<uint32_t>(begin));
  const Bytes data = f.area(length);
  if (data.size() == 0) return f.seek(before);
  f.data_lines(data);
}

}  // namespace wirelines::smb
