// Field lines that several SMB commands share. Each takes its field at the cursor.
#pragma once

#include "core/labelled.hpp"
#include "core/printers.hpp"
#include "smb/smb_fields.hpp"

namespace wirelines::smb {

inline void DspFileHandle(Fields& f) {
  f.le16("[File Handle] 0x%0.4X");
}
inline void DspFileOffset(Fields& f) {
  f.le32("[File Offset] %u (0x%0.8X) byte(s)");
}
inline void DspOffsetHigh(Fields& f) {
  f.le32("[32bits Offset High] 0x%0.8X");
}
inline void DspFileSize(Fields& f) {
  f.le32("[File Size] %u (0x%0.8X) byte(s)");
}
inline void DspAllocationSize(Fields& f) {
  f.le32("[Allocation Size] %u (0x%0.8X) byte(s)");
}
inline uint16_t DspByteCount(Fields& f) {
  return f.le16("[Byte Count] %u (0x%0.4X) byte(s)");
}
inline void DspReadCount(Fields& f) {
  f.le16("[Read Count] %u (0x%0.4X) byte(s)");
}
inline void DspWriteCount(Fields& f) {
  f.le16("[Write Count] %u (0x%0.4X) byte(s)");
}
inline void DspRemaining(Fields& f) {
  f.le16("[Remaining] %u (0x%0.4X) byte(s)");
}
inline void DspMaxCount(Fields& f) {
  f.le16("[Max Count] %u (0x%0.4X) byte(s)");
}
inline void DspMinCount(Fields& f) {
  f.le16("[Min Count] %u (0x%0.4X) byte(s)");
}
inline void DspDialectIndex(Fields& f) {
  f.le16("[Dairect Index] %u (0x%0.4X)");
}
inline void DspMaxBufferSize16(Fields& f) {
  f.le16("[Max Buffer Size] %u (0x%0.4X) byte(s)");
}
inline void DspMaxMpxCount(Fields& f) {
  f.le16("[Max Mpx Count] %u");
}
inline void DspMaxVcs(Fields& f) {
  f.le16("[Max Nor Vcs] %u");
}
inline void DspSessionKey(Fields& f) {
  f.le32("[Session Key] 0x%0.8X");
}
inline uint16_t DspKeyLength(Fields& f) {
  return f.le16("[Encryption Key Length] %u byte(s)");
}
inline void DspSearchAttributes(Fields& f) {
  f.heading("[Search Attributes] 0x%0.4X", f.le16());
}
inline void DspTotalParameterCount(Fields& f) {
  f.le16("[Total Parameter Count] %u (0x%0.4X) byte(s)");
}
inline void DspTotalDataCount(Fields& f) {
  f.le16("[Total Data Count] %u (0x%0.4X) byte(s)");
}
inline void DspMaxParameterCount(Fields& f) {
  f.le16("[Max Parameter Count] %u (0x%0.4X) byte(s)");
}
inline void DspMaxDataCount(Fields& f) {
  f.le16("[Max Data Count] %u (0x%0.4X) byte(s)");
}
inline uint16_t DspDataLength(Fields& f) {
  const uint16_t length = f.le16();
  DspDataLength16(f.section().list(), length, f.section().field(f.last()));
  return length;
}
inline uint16_t DspDataOffset(Fields& f) {
  const uint16_t offset = f.le16();
  wirelines::DspDataOffset(f.section().list(), offset, f.section().field(f.last()));
  return offset;
}

void DspTimeout(Fields& f);
void DspLastWrite(Fields& f);
uint16_t DspFileType(Fields& f);
void DspDeviceState(Fields& f, uint16_t file_type);

// Headings with their bit lines.
void DspFileAttributes(Fields& f);
void DspExtendedFileAttributes(Fields& f);
void DspDesiredAccess(Fields& f);
void DspOpenFunctionBits(Fields& f, uint16_t v);
void DspWriteMode(Fields& f);
void DspCapabilities(Fields& f);

// A time of day: seconds since 1970 by the calendar of the last write time, or 100 ns since 1601 in local time.
struct DateTime {
  uint32_t month, day, year, hour, minute, second;
};
DateTime date_time(uint32_t seconds);
DateTime local_date_time(uint64_t file_time);

// The byte area. What does not begin before the end is left out.
void DspBufferFormat(Fields& f);
void DspEncryptionKey(Fields& f, uint32_t length);
uint16_t DspSecurityBlobLength(Fields& f);
void DspSecurityBlob(Fields& f, uint32_t length);
void DspCountedData(Fields& f);  // a data length and the data

// `length` bytes of data at `offset` of the message, but not before the byte area, at which the cursor stands.
void DspDataAt(Fields& f, uint32_t offset, uint32_t length);

}  // namespace wirelines::smb
