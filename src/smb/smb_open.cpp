// Commands that open, close, name and describe files and directories.
#include "core/names.hpp"
#include "smb/smb_commands.hpp"
#include "smb/smb_printers.hpp"

namespace wirelines::smb {

namespace {

constexpr BitRow kOpenFlags[] = {
    {2, "    [bit2] batch oplock requested = %u"},
    {1, "    [bit1] exclusive oplock request = %u"},
    {0, "    [bit0] return additional info = %u"},
};

constexpr BitRow kCreateFlags[] = {
    {3, "    [bit3] create directory = %u"},
    {2, "    [bit2] request patch oplock = %u"},
    {1, "    [bit1] request oplock = %u"},
};

constexpr BitRow kAccessMask[] = {
    {31, "    [bit31] Generic Read = %u"},
    {30, "    [bit30] Generic Write = %u"},
    {29, "    [bit29] Generic Execute = %u"},
    {28, "    [bit28] Generic All = %u"},
    {25, "    [bit25] Maximum Allowed = %u"},
    {24, "    [bit24] System Security = %u"},
    {20, "    [bit20] Synchronize = %u"},
    {19, "    [bit19] Write Owner = %u"},
    {18, "    [bit18] Write DAC = %u"},
    {17, "    [bit17] Read Control = %u"},
    {16, "    [bit16] Delete = %u"},
    {8, "    [bit8] Write Attributes = %u"},
    {7, "    [bit7] Read Attributes = %u"},
    {6, "    [bit6] Delete Child = %u"},
    {5, "    [bit5] Execute = %u"},
    {4, "    [bit4] Write EA = %u"},
    {3, "    [bit3] Read EA = %u"},
    {2, "    [bit2] Append = %u"},
    {1, "    [bit1] Write = %u"},
    {0, "    [bit0] Read = %u"},
};

constexpr BitRow kShareAccess[] = {
    {2, "    [bit2] Delete = %u"},
    {1, "    [bit1] Write = %u"},
    {0, "    [bit0] Read = %u"},
};

constexpr BitRow kCreateOptions[] = {
    {12, "    [bit12] Delete on Close = %u"}, {11, "    [bit11] Random Access = %u"},
    {10, "    [bit10] 8.3 Only = %u"},        {9, "    [bit9] No EA Knowledge = %u"},
    {6, "    [bit6] Non Directory = %u"},     {5, "    [bit5] Sync I/O Nonalert = %u"},
    {4, "    [bit4] Sync I/O Alert = %u"},    {2, "    [bit2] Sequential Only = %u"},
    {1, "    [bit1] Write Through = %u"},     {0, "    [bit0] Directory = %u"},
};

constexpr BitRow kSecurityFlags[] = {
    {1, "    [bit1] effective only = %u"},
    {0, "    [bit0] context tracking = %u"},
};

// Kept: both tables are numbered from 1, though the fields count from 0.
constexpr auto kDispositions = names({
    {1, "CREATE_NEW"},
    {2, "CREATE_ALWAYS"},
    {3, "OPEN_EXISTING"},
    {4, "OPEN_ALWAYS"},
    {5, "TRUNCATE_EXISTING"},
});
constexpr auto kImpersonationLevels = names({
    {1, "SECURITY_ANONYMOUS"},
    {2, "SECURITY_IDENTIFICATION"},
    {3, "SECURITY_IMPERSONATION"},
    {4, "SECURITY_DELEGATION"},
});

constexpr auto kOplocks = names(
    {
        {0, "No oplock granted"},
        {1, "Exclusive oplock granted"},
        {2, "Batch oplock granted"},
        {3, "Level II oplock granted"},
    },
    "Unknown");

static_assert(kDispositions.distinct() && kImpersonationLevels.distinct() && kOplocks.distinct());

// A 64-bit size; its halves print high, then low.
struct Halves {
  uint32_t high, low;
};
Halves halves(uint64_t v) {
  return {static_cast<uint32_t>(v >> 32), static_cast<uint32_t>(v)};
}

// DOS date and time words.
DateTime dos_date_time(Fields& f) {
  const uint32_t v = f.le32();
  const uint32_t date = v & 0xFFFF;
  const uint32_t time = v >> 16;
  if (v == 0) return {};
  // Kept: the seconds are shown in the units of two seconds in which they are counted.
  return {date >> 5 & 0xF, date & 0x1F, (date >> 9) + 1980, time >> 11, time >> 5 & 0x3F, time & 0x1F};
}

// A file time in local time; 0 stays 0.
DateTime file_time(Fields& f) {
  const uint64_t v = f.le64();
  return v == 0 ? DateTime{} : local_date_time(v);
}

// The name of a file or directory behind a buffer format.
void DspName(Fields& f, std::string_view label) {
  DspBufferFormat(f);
  f.string(label);
}

void named(Fields& f, std::string_view label) {
  if (!f.begin(3)) return;
  DspByteCount(f);
  DspName(f, label);
}

}  // namespace

// CreateDirectory, DeleteDirectory, CheckDirectory.
void DirectoryClientAnalyze(Fields& f) {
  named(f, "[Directory] ");
}

void OpenClientAnalyze(Fields& f) {
  if (!f.begin(7)) return;
  DspDesiredAccess(f);
  DspFileAttributes(f);
  DspByteCount(f);
  DspName(f, "[File Name] ");
}

void OpenServerAnalyze(Fields& f) {
  if (!f.begin(17)) return;
  DspFileHandle(f);
  DspFileAttributes(f);
  DspLastWrite(f);
  DspFileSize(f);
  DspDesiredAccess(f);
  DspByteCount(f);
}

void OpenAndXClientAnalyze(Fields& f) {
  if (!f.begin(33)) return;
  f.skip(kAndXSize);
  f.flags16("[Flags] 0x%0.4X", kOpenFlags);
  DspDesiredAccess(f);
  DspSearchAttributes(f);
  DspFileAttributes(f);
  const DateTime t = date_time(f.le32());
  f.line("[Created] %0.2u/%0.2u/%u %0.2u:%0.2u:%0.2u", t.month, t.day, t.year, t.hour, t.minute, t.second);
  const uint16_t function = f.le16();
  f.heading("[Open Function] 0x%0.4X", function);
  DspOpenFunctionBits(f, function);
  DspAllocationSize(f);
  f.skip(8);
  DspByteCount(f);
  f.string("[File Name] ");
}

void OpenAndXServerAnalyze(Fields& f) {
  if (!f.begin(33)) return;
  f.skip(kAndXSize);
  DspFileHandle(f);
  DspFileAttributes(f);
  DspLastWrite(f);
  DspFileSize(f);
  DspDesiredAccess(f);
  const uint16_t type = DspFileType(f);
  DspDeviceState(f, type);
  const uint16_t action = f.le16();
  f.heading("[Action] 0x%0.4X", action);
  DspOpenFunctionBits(f, action);
  f.le32("[Server FID] 0x%0.8X");
  f.skip(2);
  DspByteCount(f);
}

void NtCreateClientAnalyze(Fields& f) {
  if (!f.begin(51)) return;
  f.skip(kAndXSize + 1);
  f.le16("[File Name Length] %u (0x%0.4X) byte(s)");
  f.flags32("[Create Flags] 0x%0.8X", kCreateFlags);
  f.le32("[Root Directory FID] 0x%0.8X");
  f.flags32("[Access Mask] 0x%0.8X", kAccessMask);
  const Halves size = halves(f.le64());
  f.line("[Initial Allocation Size] 0x%0.8X%0.8X", size.high, size.low);
  DspExtendedFileAttributes(f);
  f.flags32("[Share Access] 0x%0.8X", kShareAccess);
  const uint32_t disposition = f.le32();
  f.line("[Create Disposition] 0x%0.8X %s", disposition, parens(kDispositions(disposition)));
  f.flags32("[Create Options] 0x%0.8X", kCreateOptions);
  const uint32_t impersonation = f.le32();
  f.line("[Impersonation Level] 0x%0.8X %s", impersonation, parens(kImpersonationLevels(impersonation)));
  f.flags8("[Security Flags] 0x%0.2X", kSecurityFlags);
  DspByteCount(f);
  f.string("[File Name] ");
}

void NtCreateServerAnalyze(Fields& f) {
  if (!f.begin(71)) return;
  f.skip(kAndXSize);
  const uint8_t oplock = f.u8();
  f.line("[Oplock] %u (%s)", oplock, kOplocks(oplock));
  DspFileHandle(f);
  f.le32("[Create Action] 0x%0.8X");
  DateTime t = file_time(f);
  f.line("[Creation Time] %0.2u/%0.2u/%0.4u %0.2u:%0.2u:%0.2u", t.month, t.day, t.year, t.hour, t.minute, t.second);
  t = file_time(f);
  f.line("[Last Accessed Time] %0.2u/%0.2u/%0.4u %0.2u:%0.2u:%0.2u", t.month, t.day, t.year, t.hour, t.minute,
         t.second);
  t = file_time(f);
  f.line("[Last Written Time] %0.2u/%0.2u/%0.4u %0.2u:%0.2u:%0.2u", t.month, t.day, t.year, t.hour, t.minute, t.second);
  t = file_time(f);
  f.line("[Last Changed Time] %0.2u/%0.2u/%0.4u %0.2u:%0.2u:%0.2u", t.month, t.day, t.year, t.hour, t.minute, t.second);
  DspExtendedFileAttributes(f);
  const Halves allocated = halves(f.le64());
  f.line("[Allocation Size] 0x%0.8X%0.8X byte(s)", allocated.high, allocated.low);
  const Halves end = halves(f.le64());
  f.line("[End of File] 0x%0.8X%0.8X byte(s)", end.high, end.low);
  const uint16_t type = DspFileType(f);
  DspDeviceState(f, type);
  const uint8_t directory = f.u8();
  f.line("[Is Directory] 0x%0.2X (%s)", directory, directory != 0 ? "Directory" : "Not a Directory");
  DspByteCount(f);
}

void CloseClientAnalyze(Fields& f) {
  if (!f.begin(9)) return;
  DspFileHandle(f);
  DspLastWrite(f);
  DspByteCount(f);
}

// Flush, QueryInformation2.
void HandleClientAnalyze(Fields& f) {
  if (!f.begin(5)) return;
  DspFileHandle(f);
  DspByteCount(f);
}

void DeleteClientAnalyze(Fields& f) {
  if (!f.begin(5)) return;
  DspSearchAttributes(f);
  DspByteCount(f);
  DspName(f, "[File Name] ");
}

void RenameClientAnalyze(Fields& f) {
  if (!f.begin(5)) return;
  DspSearchAttributes(f);
  DspByteCount(f);
  DspName(f, "[Old File Name] ");
  DspName(f, "[New File Name] ");
}

void QueryInformationClientAnalyze(Fields& f) {
  named(f, "[File Name] ");
}

void QueryInformationServerAnalyze(Fields& f) {
  if (!f.begin(23)) return;
  DspFileAttributes(f);
  DspLastWrite(f);
  DspFileSize(f);
  f.skip(10);
  DspByteCount(f);
}

void QueryInformation2ServerAnalyze(Fields& f) {
  if (!f.begin(25)) return;
  const DateTime created = dos_date_time(f);
  if (created.year == 0) {
    f.line("[Created] 00/00/0000 00:00:00");
  } else {
    // Kept: "%0.2/" is no conversion and prints as it stands; the day and what follows take the later ones.
    f.line("[Created] %0.2u/%0.2/%u %0.2u:%0.2u:%0.2u", created.month, created.day, created.year, created.hour,
           created.minute);
  }
  const DateTime accessed = dos_date_time(f);
  if (accessed.year == 0) {
    f.line("[Last Accessed Time] 00/00/0000 00:00:00");
  } else {
    // Kept: the label of the creation time.
    f.line("[Created] %0.2u/%0.2u/%u %0.2u:%0.2u:%0.2u", accessed.month, accessed.day, accessed.year, accessed.hour,
           accessed.minute, accessed.second);
  }
  const DateTime written = dos_date_time(f);
  f.line("[Last Written Time] %0.4u/%0.2u/%0.2u %0.2u:%0.2u:%0.2u", written.year, written.month, written.day,
         written.hour, written.minute, written.second);
  f.le32("[End of File] %u (0x%0.8X) byte(s)");
  DspAllocationSize(f);
  DspFileAttributes(f);
  DspByteCount(f);
}

void FindCloseClientAnalyze(Fields& f) {
  if (!f.begin(5)) return;
  f.le16("[SID] 0x%0.4X");
  DspByteCount(f);
}

}  // namespace wirelines::smb
