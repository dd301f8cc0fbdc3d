// Commands that set up and tear down a session: Negotiate, SessionSetupAndX, LogOffAndX, TreeConnectAndX, Echo.
#include "smb/smb_commands.hpp"
#include "smb/smb_printers.hpp"

namespace wirelines::smb {

namespace {

constexpr uint8_t kDialect = 2;  // buffer format
constexpr uint32_t kMostDialects = 20;

constexpr uint32_t kExtendedSecurity = 0x80000000;  // of the server's capabilities

constexpr BitTextRow kSecurityMode[] = {
    {1, "[bit1] 1 = encrypt passwords", "[bit1] 0 = no authentication"},
    {0, "[bit0] 1 = user", "[bit0] 0 = share"},
};

constexpr BitRow kServerCapabilities[] = {
    {31, "    [bit31] CAP_EXTENDED_SECURITY = %u"},
    {30, "    [bit30] CAP_COMPRESSED_DATA = %u"},
    {29, "    [bit29] CAP_BULK_TRANSFER = %u"},
    {14, "    [bit14] CAP_LARGE_READX = %u"},
    {12, "    [bit12] CAP_DFS = %u"},
    {9, "    [bit9] CAP_NT_FIND = %u"},
    {8, "    [bit8] CAP_LOCK_AND_READ = %u"},
    {7, "    [bit7] CAP_LEVEL_2_COPLOCKS = %u"},
    {6, "    [bit6] CAP_STATUS32 = %u"},
    {5, "    [bit5] CAP_RPC_REMOTE_APIS = %u"},
    {4, "    [bit4] CAP_NT_SMBS = %u"},
    {3, "    [bit3] CAP_LARGE_FILES = %u"},
    {2, "    [bit2] CAP_UNICODE = %u"},
    {1, "    [bit1] CAP_MPX_MODE = %u"},
    {0, "    [bit0] CAP_RAW_MODE = %u"},
};

constexpr BitRow kRequestMode[] = {{0, "    [bit0] logged in as GUEST = %u"}};
constexpr BitRow kTreeFlags[] = {{0, "    [bit0] disconnect Tid = %u"}};
constexpr BitRow kOptionalSupport[] = {
    {1, "    [bit1] share is in dfs = %u"},
    {0, "    [bit0] support search bits = %u"},
};

// The one form of the dialects that were asked for before LAN Manager: the index, or 0xFFFF for none.
void negotiate_core(Fields& f) {
  if (!f.begin(5)) return;
  DspDialectIndex(f);
  DspByteCount(f);
}

void negotiate_lan_manager(Fields& f) {
  if (!f.begin(36)) return;
  DspDialectIndex(f);
  const uint16_t security = f.le16();
  f.line("[Security Mode] 0x%0.2X [share=0/user=1] %u [challeng/response authentication] %u", security, security & 1,
         security >> 1 & 1);
  DspMaxBufferSize16(f);
  DspMaxMpxCount(f);
  DspMaxVcs(f);
  const uint16_t raw = f.le16();
  f.line("[Raw Mode] 0x%0.4X [Read Raw] %u [Write Raw] %u", raw, raw & 1, raw >> 1 & 1);
  DspSessionKey(f);
  const uint16_t time = f.le16();
  f.line("[Serve Time] %0.2u:%0.2u:%0.2u", time >> 11, time >> 5 & 0x3F, (time & 0x1F) * 2);
  const uint16_t date = f.le16();
  f.line("[Serve Date] %0.4u/%0.2u/%0.2u", (date >> 9) + 1980, date >> 5 & 0xF, date & 0x1F);
  f.le16("[Server Time Zone] %u");
  const uint16_t key_length = DspKeyLength(f);
  f.skip(2);
  DspByteCount(f);
  // Kept: the key is looked for at byte 35, though it begins with the byte area at 29.
  f.seek(35);
  DspEncryptionKey(f, key_length);
  f.string("[Domain Name] ", false);
}

void DspSystemTime(Fields& f) {
  const uint64_t time = f.le64();
  const auto low = static_cast<uint32_t>(time);
  const auto high = static_cast<uint32_t>(time >> 32);
  if (low == 0 || high == 0) return f.line("[System Time] 0x%0.8X%0.8X", high, low);
  const DateTime t = local_date_time(time);
  f.line("[System Time] %0.2u/%0.2u/%u %0.2u:%0.2u:%0.2u", t.month, t.day, t.year, t.hour, t.minute, t.second);
}

void negotiate_nt(Fields& f) {
  if (!f.begin(37)) return;
  DspDialectIndex(f);
  f.flags8("[Security Mode] 0x%0.2X", kSecurityMode);
  DspMaxMpxCount(f);
  DspMaxVcs(f);
  f.le32("[Max Buffer Size] %u (0x%0.8X) byte(s)");
  f.le32("[Max Raw Size] %u (0x%0.8X) byte(s)");
  DspSessionKey(f);
  const uint32_t capabilities = f.flags32("[Capabilities] 0x%0.8X", kServerCapabilities);
  DspSystemTime(f);
  f.le16("[Server Time Zone] %u (0x%0.4X)");
  const uint8_t key_length = f.u8("[Encryption Key length] %u byte(s)");
  const uint16_t byte_count = DspByteCount(f);
  if ((capabilities & kExtendedSecurity) != 0) return DspSecurityBlob(f, byte_count);
  DspEncryptionKey(f, key_length);
  f.string("[Domain Name] ", false);
}

void DspVcNumber(Fields& f) {
  const uint16_t number = f.le16();
  if (number == 0) return f.line("[Vc No] 0 (first)");
  f.line("[Vc No] %u (additional)", number);
}

uint16_t DspAnsiPasswordLength(Fields& f) {
  return f.le16("[ANSI Password Length] %u (0x%0.4X) byte(s)");
}

void DspNoPassword(Fields& f, std::string_view text) {
  add_line(f.section().list(), {kCommand.field, 1, 0, 0, kCommand.styleIndex, kCommand.styleGroup}, "%s", text);
}

void DspAnsiPassword(Fields& f, uint32_t length) {
  const Bytes password = f.area(length);
  if (password.size() == 0) return DspNoPassword(f, "[ANSI Password] None");
  f.heading("[ANSI Password] %u (0x%0.4X) byte(s)", password.size(), password.size());
  f.data_lines(password);
}

void DspUnicodePassword(Fields& f, uint32_t length) {
  const Bytes password = f.area(length);
  if (password.size() == 0) return DspNoPassword(f, "[Unicode Password] None");
  f.heading("[Unicode Password] %u (0x%0.4X) byte(s)", password.size(), password.size());
  f.data_lines(password);
}

void DspNativeNames(Fields& f) {
  f.string("[Native OS] ");
  f.string("[Native LAN Manager] ");
}

void DspAccount(Fields& f) {
  f.string("[Account] ");
  f.string("[Primary Domain] ");
  DspNativeNames(f);
}

// What every form of a SessionSetupAndX request begins with.
void DspSessionLimits(Fields& f) {
  f.skip(kAndXSize);
  DspMaxBufferSize16(f);
  DspMaxMpxCount(f);
  DspVcNumber(f);
  DspSessionKey(f);
}

void setup_with_blob(Fields& f) {
  if (!f.begin(27)) return;
  DspSessionLimits(f);
  const uint16_t blob_length = DspSecurityBlobLength(f);
  f.skip(4);
  DspCapabilities(f);
  DspByteCount(f);
  DspSecurityBlob(f, blob_length);
  DspNativeNames(f);
}

void setup_with_one_password(Fields& f) {
  if (!f.begin(23)) return;
  DspSessionLimits(f);
  const uint16_t ansi_length = DspAnsiPasswordLength(f);
  f.skip(4);
  DspByteCount(f);
  DspAnsiPassword(f, ansi_length);
  DspAccount(f);
}

void setup_with_passwords(Fields& f) {
  if (!f.begin(29)) return;
  DspSessionLimits(f);
  const uint16_t ansi_length = DspAnsiPasswordLength(f);
  const auto unicode_length = f.le16("[Unicode Password Length] %u (0x%0.4X) byte(s)");
  f.skip(4);
  DspCapabilities(f);
  DspByteCount(f);
  DspAnsiPassword(f, ansi_length);
  DspUnicodePassword(f, unicode_length);
  DspAccount(f);
}

}  // namespace

void NegotiateClientAnalyze(Fields& f) {
  if (!f.begin(4)) return;
  DspByteCount(f);
  const uint8_t format = f.block().u8(3);
  DspBufferFormat(f);
  for (uint32_t i = 0; format == kDialect && i < kMostDialects && f.more(); ++i) {
    f.single_byte_string(TextBuffer("[Dialect Index %u] ", i));
    f.skip(1);  // the buffer format of the next name
    if (!f) return;
  }
  f.seek(f.length());
}

void NegotiateServerAnalyze(Fields& f) {
  switch (f.words()) {
    case 1: return negotiate_core(f);
    case 13: return negotiate_lan_manager(f);
    case 17: return negotiate_nt(f);
    default: f.begin(3);  // the rest as it is
  }
}

void SessionSetupClientAnalyze(Fields& f) {
  switch (f.words()) {
    case 12: return setup_with_blob(f);
    case 10: return setup_with_one_password(f);
    default: return setup_with_passwords(f);
  }
}

void SessionSetupServerAnalyze(Fields& f) {
  const bool with_blob = f.words() == 4;
  if (!f.begin(with_blob ? 11 : 9)) return;
  f.skip(kAndXSize);
  f.flags16("[Request Mode] 0x%0.4X", kRequestMode);
  if (with_blob) {
    const uint16_t blob_length = DspSecurityBlobLength(f);
    f.seek(11);
    DspSecurityBlob(f, blob_length);
    const uint32_t strings = f.offset();
    f.seek(9);
    DspByteCount(f);
    f.seek(strings);
  } else {
    DspByteCount(f);
  }
  DspNativeNames(f);
  f.string("[Primary Domain] ");
}

void LogOffAnalyze(Fields& f) {
  if (!f.begin(7)) return;
  f.skip(kAndXSize);
  DspByteCount(f);
}

void TreeConnectClientAnalyze(Fields& f) {
  if (!f.begin(11)) return;
  f.skip(kAndXSize);
  f.flags16("[Flags] 0x%0.4X", kTreeFlags);
  const uint16_t password_length = DspKeyLength(f);
  DspByteCount(f);
  DspEncryptionKey(f, password_length);
  f.string("[Path] ");
  f.string("[Service] ");
}

void TreeConnectServerAnalyze(Fields& f) {
  if (!f.begin(9)) return;
  if (f.words() != 3) return DspSmbParameters(f);
  f.seek(7);
  DspByteCount(f);
  f.seek(5);
  f.flags16("[Optional Support] 0x%0.4X", kOptionalSupport);
  f.seek(9);
  f.string("[Service] ");
  f.string("[Native File System] ");
}

void EchoClientAnalyze(Fields& f) {
  if (!f.begin(5)) return;
  f.le16("[Echo Count] %u (0x%0.4X)");
  DspByteCount(f);
}

void EchoServerAnalyze(Fields& f) {
  if (!f.begin(5)) return;
  const uint16_t number = f.le16();
  DspSequenceNo16(f.section().list(), number, f.section().field(f.last()));
  DspByteCount(f);
}

}  // namespace wirelines::smb
