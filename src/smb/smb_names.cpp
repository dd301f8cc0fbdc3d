// Names of SMB commands and errors.
#include "smb/smb_names.hpp"

#include "core/names.hpp"

namespace wirelines::smb {

namespace {

constexpr auto kCommands = names({
    {0x00, "CREATE_DIRECTORY"},
    {0x01, "DELETE_DIRECTORY"},
    {0x02, "OPEN"},
    {0x03, "CREATE"},
    {0x04, "CLOSE"},
    {0x05, "FLUSH"},
    {0x06, "DELETE"},
    {0x07, "RENAME"},
    {0x08, "QUERY_INFORMATION"},
    {0x09, "SET_INFORMATION"},
    {0x0A, "READ"},
    {0x0B, "WRITE"},
    {0x0C, "LOCK_BYTE_RANGE"},
    {0x0D, "UNLOCK_BYTE_RANGE"},
    {0x0E, "CREATE_TEMPORARY"},
    {0x0F, "CREATE_NEW"},
    {0x10, "CHECK_DIRECTORY"},
    {0x11, "PROCESS_EXIT"},
    {0x12, "SEEK"},
    {0x13, "LOCK_AND_READ"},
    {0x14, "WRITE_AND_UNLOCK"},
    {0x1A, "READ_RAW"},
    {0x1B, "READ_MPX"},
    {0x1C, "READ_MPX_SECONDARY"},
    {0x1D, "WRITE_RAW"},
    {0x1E, "WRITE_MPX"},
    {0x20, "WRITE_COMPLETE"},
    {0x22, "SET_INFORMATION2"},
    {0x23, "QUERY_INFORMATION2"},
    {0x24, "LOCKING_ANDX"},
    {0x25, "TRANSACTION"},
    {0x26, "TRANSACTION_SECONDARY"},
    {0x27, "IOCTL"},
    {0x28, "IOCTL_SECONDARY"},
    {0x29, "COPY"},
    {0x2A, "MOVE"},
    {0x2B, "ECHO"},
    {0x2C, "WRITE_AND_CLOSE"},
    {0x2D, "OPEN_ANDX"},
    {0x2E, "READ_ANDX"},
    {0x2F, "WRITE_ANDX"},
    {0x31, "CLOSE_AND_TREE_DISC"},
    {0x32, "TRANSACTION2"},
    {0x33, "TRANSACTION2_SECONDARY"},
    {0x34, "FIND_CLOSE2"},
    {0x35, "FIND_NOTIFY_CLOSE"},
    {0x70, "TREE_CONNECT"},
    {0x71, "TREE_DISCONNECT"},
    {0x72, "NEGOTIATE"},
    {0x73, "SESSION_SETUP_ANDX"},
    {0x74, "LOGOFF_ANDX"},
    {0x75, "TREE_CONNECT_ANDX"},
    {0x80, "QUERY_INFORMATION_DISK"},
    {0x81, "SEARCH"},
    {0x82, "FIND"},
    {0x83, "FIND_UNIQUE"},
    {0xA0, "NT_TRANSACT"},
    {0xA1, "NT_TRANSACT_SECONDARY"},
    {0xA2, "NT_CREATE_ANDX"},
    {0xA4, "NT_CANCEL"},
    {0xC0, "OPEN_PRINT_FILE"},
    {0xC1, "WRITE_PRINT_FILE"},
    {0xC2, "CLOSE_PRINT_FILE"},
    {0xC3, "GET_PRINT_QUEUE"},
    {0xD0, "SEND_SINGLE_BLOCK_MESSAGE"},
});

constexpr auto kErrorClasses = names(
    {
        {0x00, "No Error"},
        {0x01, "DOS Based Error"},
        {0x02, "Server Error"},
        {0x03, "Hardware Style Error"},
    },
    "Not an SMB Format Command");

constexpr auto kDosErrors = names(
    {
        {0x0000, ""},
        {0x0001, "Invalid Function"},
        {0x0002, "File Not Found"},
        {0x0003, "Directory Not Found"},
        {0x0004, "Too Many Open Files"},
        {0x0005, "Access Denied"},
        {0x0006, "Invalid Fid"},
        {0x0007, "Memory Control Blocks Destroyed"},
        {0x0008, "Out of Memory"},
        {0x0009, "Invalid Memory Block Address"},
        {0x000A, "Invalid Environment"},
        {0x000B, "Invalid Format"},
        {0x000C, "Invalid Open Mode"},
        {0x000D, "Invalid Data"},
        {0x000F, "Invalid Drive"},
        {0x0010, "Attempt to Delete Current Directory"},
        {0x0011, "Rename/Move Across Different Filesystems"},
        {0x0012, "No more Files Found in File Search"},
        {0x0020, "Share Mode on File Conflict with Open Mode"},
        {0x0021, "Lock Request Conflicts with Existing Lock"},
        {0x0032, "Request Unsupported, Returned by Win 95"},
        {0x0043, "Share does not Exits"},
        {0x0050, "File in Operation Already Exists"},
        {0x0057, "Invalid Parameter"},
        {0x006E, "Cannot Open The File Specified"},
        {0x007A, "Insufficient Buffer Size"},
        {0x007B, "Invalid Name"},
        {0x007C, "Unknown Info Level"},
        {0x00B7, "File Already Exists"},
        {0x00E6, "Named pipe invalid"},
        {0x00E7, "All Instances of Pipe are Busy"},
        {0x00E8, "Named Pipe Close in Progress"},
        {0x00E9, "No Process on Other End of Named Pipe"},
        {0x00EA, "More Data to be Returned"},
        {0x0103, "No More Items"},
        {0x010B, "Invalid Directory Name in a Path"},
        {0x0113, "Extended Attributes didn't Fit"},
        {0x011A, "Extended Attributes not Supported"},
        {0x03FE, "Buffer too Small to Return Change Notify"},
        {0x0042, "Don't Support Ipc"},
        {0x051B, "Invalid Security Descriptor Owner"},
        {0x053A, "Invalid Security Descriptor"},
        {0x0705, "Unknown Printer Driver"},
        {0x0709, "Invalid Printer Name"},
        {0x070A, "Printer Already Exists"},
        {0x070C, "Invalid Datatype"},
        {0x070D, "Invalid Environment"},
        {0x076F, "Invalid form Size"},
        {0x0BB9, "Printer Driver in Use"},
    },
    "Unknown");

constexpr auto kServerErrors = names(
    {
        {0x0000, ""},
        {0x0001, "Non specific error code"},
        {0x0002, "Bad password"},
        {0x0004, "No permissions to do the requested operation"},
        {0x0005, "tid invalid"},
        {0x0006, "Invalid servername"},
        {0x0007, "Invalid device"},
        {0x0031, "Print queue Full"},
        {0x0032, "Queued item Too big"},
        {0x0033, "EOF in print Queue Dump"},
        {0x0034, "Invalid Print File in Smb_fid"},
        {0x0040, "Unrecognised Command"},
        {0x0041, "Smb Server Internal Error"},
        {0x0043, "FID and Pathname Invalid Combination"},
        {0x0045, "Access Specified for a File is not Valid"},
        {0x0047, "Attribute mode Invalid"},
        {0x0051, "Message Server Paused"},
        {0x0052, "Not Receiving Messages"},
        {0x0053, "No Room for Message"},
        {0x0057, "Too Many Remote Usernames"},
        {0x0058, "Operation Timed Out"},
        {0x0059, "No Resources Currently Available for Request"},
        {0x005A, "Too Many Userids"},
        {0x005B, "Bad Userid"},
        {0x00FA, "Temporarily Unable to Use Raw Mode, Use MPX Mode"},
        {0x00FB, "Temporarily Unable to Use Raw Mode, Use Standard Mode"},
        {0x00FC, "Resume MPX Mode"},
    },
    "Unknown");

// Kept: an unknown hardware error has no text at all.
constexpr auto kHardwareErrors = names({
    {0x0000, ""},
    {0x0013, "Read Only Media"},
    {0x0014, "Unknown Device"},
    {0x0015, "Drive not Ready"},
    {0x0016, "Unknown Command"},
    {0x0017, "CRC Error"},
    {0x0018, "Bad Request Structure Length"},
    {0x0019, "Seek Error"},
    {0x001A, "Unknown Media Type"},
    {0x001B, "Sector Not Found"},
    {0x001C, "Printer Out of Paper"},
    {0x001D, "Write Fault"},
    {0x001E, "Read Fault"},
    {0x001F, "General Failure"},
    {0x0020, "An Open Conflicts with an Existing Open"},
    {0x0021, "Lock Request Conflicts with Existing Lock"},
    {0x0022, "The Wrong Disk was Found in a Drive"},
    {0x0023, "No FCBs are Available to Process Request"},
    {0x0024, "A sharing buffer has been exceeded"},
    {0x0027, "Disk Full"},
});

static_assert(kCommands.distinct() && kErrorClasses.distinct() && kDosErrors.distinct() && kServerErrors.distinct() &&
              kHardwareErrors.distinct());

}  // namespace

std::string_view SmbCommandToName(uint8_t command) {
  return kCommands(command);
}

std::string_view SmbErrorClassToName(uint8_t error_class) {
  return kErrorClasses(error_class);
}

std::string_view SmbDosErrorToName(uint16_t code) {
  return kDosErrors(code);
}

std::string_view SmbServerErrorToName(uint16_t code) {
  return kServerErrors(code);
}

std::string_view SmbHardwareErrorToName(uint16_t code) {
  return kHardwareErrors(code);
}

}  // namespace wirelines::smb
