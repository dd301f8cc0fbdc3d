// Commands that read, write, lock and control open files, and the one that sends a message.
#include "core/names.hpp"
#include "smb/smb_commands.hpp"
#include "smb/smb_printers.hpp"

namespace wirelines::smb {

namespace {

// Word counts from which a request carries the high half of its file offset.
constexpr uint8_t kLargeReadRaw = 10;
constexpr uint8_t kLargeReadAndX = 12;
constexpr uint8_t kLargeWrite = 14;

constexpr uint8_t kLargeFiles = 0x10;  // of the lock type

constexpr BitRow kWriteRawMode[] = {
    {1, "    [bit1] pipe/dev = %u"},
    {0, "    [bit0] complete write to disk and send response = %u"},
};

constexpr auto kSeekModes = names({{0, "Begin"}, {1, "Current"}}, "Unknown");

constexpr auto kLockTypes = names(
    {
        {0x00, "Read/Write Lock"},
        {0x01, "Shared Lock"},
        {0x02, "Oplock Release"},
        {0x04, "Change Lock Type"},
        {0x08, "Cancel Lock"},
        {0x10, "Large Files"},
    },
    "Unknown");
static_assert(kLockTypes.distinct());

// A counted block of data behind its buffer format.
void DspFormattedData(Fields& f) {
  DspBufferFormat(f);
  DspCountedData(f);
}

void large_range_lines(Fields& f) {
  const uint16_t pid = f.le16();
  f.detail("[Pid] 0x%0.2X", pid);
  f.skip(2);
  uint32_t v = f.le32();
  f.detail("[OffsetHigh] 0x%0.4X", v);
  v = f.le32();
  f.detail("[OffsetLow] 0x%0.4X", v);
  v = f.le32();
  f.detail("[LengthHigh] 0x%0.4X", v);
  v = f.le32();
  f.detail("[LengthLow] 0x%0.4X", v);
}

void range_lines(Fields& f) {
  const uint16_t pid = f.le16();
  f.detail("[Pid] 0x%0.2X", pid);
  uint32_t v = f.le32();
  f.detail("[Offset] 0x%0.4X", v);
  v = f.le32();
  f.detail("[Length] 0x%0.4X", v);
}

// The ranges to unlock or to lock, as many as begin before the end.
void lock_ranges(Fields& f, uint32_t count, bool large, NumberFormat large_heading, NumberFormat heading) {
  for (uint32_t i = 0; i < count && f.more() && f; ++i) {
    const Range range = at(f.offset(), f.offset() + (large ? 19 : 9));
    f.section().heading_value(range, large ? large_heading : heading, i);
    large ? large_range_lines(f) : range_lines(f);
  }
}

}  // namespace

void ReadClientAnalyze(Fields& f) {
  if (!f.begin(13)) return;
  DspFileHandle(f);
  DspReadCount(f);
  DspFileOffset(f);
  DspRemaining(f);
  DspByteCount(f);
}

void ReadServerAnalyze(Fields& f) {
  if (!f.begin(13)) return;
  DspReadCount(f);
  f.skip(8);
  DspByteCount(f);
  DspFormattedData(f);
}

void WriteClientAnalyze(Fields& f) {
  if (!f.begin(13)) return;
  DspFileHandle(f);
  DspWriteCount(f);
  DspFileOffset(f);
  DspRemaining(f);
  DspByteCount(f);
  DspFormattedData(f);
}

void WriteServerAnalyze(Fields& f) {
  if (!f.begin(5)) return;
  DspWriteCount(f);
  DspByteCount(f);
}

void SeekClientAnalyze(Fields& f) {
  if (!f.begin(11)) return;
  DspFileHandle(f);
  const uint16_t mode = f.le16();
  f.line("[Mode] %u (%s)", mode, kSeekModes(mode));
  DspFileOffset(f);
  DspByteCount(f);
}

void SeekServerAnalyze(Fields& f) {
  if (!f.begin(7)) return;
  DspFileOffset(f);
  DspByteCount(f);
}

void ReadRawAnalyze(Fields& f) {
  const bool large = f.words() >= kLargeReadRaw;
  if (!f.begin(large ? 23 : 19)) return;
  DspFileHandle(f);
  DspFileOffset(f);
  DspMaxCount(f);
  DspMinCount(f);
  DspTimeout(f);
  f.skip(2);
  if (large) DspOffsetHigh(f);
  f.le16("[Byte Count] %u byte(s)");
}

void WriteRawClientAnalyze(Fields& f) {
  const bool large = f.words() >= kLargeWrite;
  if (!f.begin(large ? 31 : 27)) return;
  DspFileHandle(f);
  DspWriteCount(f);
  f.skip(2);
  DspFileOffset(f);
  DspTimeout(f);
  f.flags16("[Write Mode] 0x%0.4X", kWriteRawMode);
  f.skip(4);
  const uint16_t length = DspDataLength(f);
  const uint16_t offset = DspDataOffset(f);
  if (large) {
    f.seek(29);
    DspByteCount(f);
    f.seek(25);
    DspOffsetHigh(f);
    f.seek(31);
  } else {
    DspByteCount(f);
  }
  DspDataAt(f, offset, length);
}

void WriteRawServerAnalyze(Fields& f) {
  if (!f.begin(5)) return;
  DspRemaining(f);
  DspByteCount(f);
}

void ReadAndXClientAnalyze(Fields& f) {
  const bool large = f.words() >= kLargeReadAndX;
  if (!f.begin(large ? 27 : 23)) return;
  f.skip(kAndXSize);
  DspFileHandle(f);
  DspFileOffset(f);
  DspMaxCount(f);
  DspMinCount(f);
  f.skip(6);
  if (large) DspOffsetHigh(f);
  DspByteCount(f);
}

void ReadAndXServerAnalyze(Fields& f) {
  if (!f.begin(27)) return;
  f.skip(kAndXSize + 2);
  f.le16("[Data Compaction Mode] 0x%0.4X");
  f.skip(2);
  const uint16_t length = DspDataLength(f);
  const uint16_t offset = DspDataOffset(f);
  f.skip(10);
  DspByteCount(f);
  DspDataAt(f, offset, length);
}

void WriteAndXClientAnalyze(Fields& f) {
  const bool large = f.words() >= kLargeWrite;
  if (!f.begin(large ? 31 : 27)) return;
  f.skip(kAndXSize);
  DspFileHandle(f);
  DspFileOffset(f);
  f.skip(4);
  DspWriteMode(f);
  DspRemaining(f);
  f.skip(2);
  const uint16_t length = DspDataLength(f);
  const uint16_t offset = DspDataOffset(f);
  if (large) DspOffsetHigh(f);
  DspByteCount(f);
  DspDataAt(f, offset, length);
}

void WriteAndXServerAnalyze(Fields& f) {
  if (!f.begin(15)) return;
  f.skip(kAndXSize);
  DspWriteCount(f);
  f.skip(6);
  DspByteCount(f);
}

void LockingClientAnalyze(Fields& f) {
  if (!f.begin(19)) return;
  f.skip(kAndXSize);
  DspFileHandle(f);
  const uint8_t type = f.u8();
  f.line("[LockType] 0x%0.2X (%s)", type, kLockTypes(type));
  f.u8("[Oplock Level] %u");
  DspTimeout(f);
  const uint16_t unlocks = f.le16("[Number of Unlocks] %u (0x%0.2X)");
  const uint16_t locks = f.le16("[Number ofLocks] %u (0x%0.2X)");
  DspByteCount(f);
  const bool large = (type & kLargeFiles) != 0;
  lock_ranges(f, unlocks, large, "[LargeFile Unlocking Range Format - %u]", "[Unlocking Range Format - %u]");
  lock_ranges(f, locks, large, "[LargeFile Locking Range Format - %u]", "[Locking Range Format - %u]");
}

void LockingServerAnalyze(Fields& f) {
  if (!f.begin(7)) return;
  f.skip(kAndXSize);
  DspByteCount(f);
}

void IoCtlClientAnalyze(Fields& f) {
  if (!f.begin(31)) return;
  DspFileHandle(f);
  f.le16("[Device Category] 0x%0.4X");
  f.le16("[Device Function] 0x%0.4X");
  DspTotalParameterCount(f);
  DspTotalDataCount(f);
  DspMaxParameterCount(f);
  DspMaxDataCount(f);
  DspTimeout(f);
  f.skip(10);
  DspByteCount(f);
}

void SendMessageAnalyze(Fields& f) {
  if (!f.begin(3)) return;
  DspByteCount(f);
  DspBufferFormat(f);
  f.string("[Originator Name] ");
  DspBufferFormat(f);
  f.string("[Destination Name] ");
  DspFormattedData(f);
}

}  // namespace wirelines::smb
