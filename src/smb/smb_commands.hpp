// The decoders of the command blocks: the client's requests and the server's responses.
#pragma once

#include "smb/smb_fields.hpp"

namespace wirelines::smb {

void UnknownAnalyze(Fields& f);  // a command without a decoder of its own: nothing is shown behind its block
void GenericAnalyze(Fields& f);  // words and bytes as they are
void EmptyAnalyze(Fields& f);    // no words: the byte count alone

// smb_session.cpp
void NegotiateClientAnalyze(Fields& f);
void NegotiateServerAnalyze(Fields& f);
void SessionSetupClientAnalyze(Fields& f);
void SessionSetupServerAnalyze(Fields& f);
void LogOffAnalyze(Fields& f);
void TreeConnectClientAnalyze(Fields& f);
void TreeConnectServerAnalyze(Fields& f);
void EchoClientAnalyze(Fields& f);
void EchoServerAnalyze(Fields& f);

// smb_open.cpp
void DirectoryClientAnalyze(Fields& f);
void OpenClientAnalyze(Fields& f);
void OpenServerAnalyze(Fields& f);
void OpenAndXClientAnalyze(Fields& f);
void OpenAndXServerAnalyze(Fields& f);
void NtCreateClientAnalyze(Fields& f);
void NtCreateServerAnalyze(Fields& f);
void CloseClientAnalyze(Fields& f);
void HandleClientAnalyze(Fields& f);
void DeleteClientAnalyze(Fields& f);
void RenameClientAnalyze(Fields& f);
void QueryInformationClientAnalyze(Fields& f);
void QueryInformationServerAnalyze(Fields& f);
void QueryInformation2ServerAnalyze(Fields& f);
void FindCloseClientAnalyze(Fields& f);

// smb_io.cpp
void ReadClientAnalyze(Fields& f);
void ReadServerAnalyze(Fields& f);
void WriteClientAnalyze(Fields& f);
void WriteServerAnalyze(Fields& f);
void SeekClientAnalyze(Fields& f);
void SeekServerAnalyze(Fields& f);
void ReadRawAnalyze(Fields& f);
void WriteRawClientAnalyze(Fields& f);
void WriteRawServerAnalyze(Fields& f);
void ReadAndXClientAnalyze(Fields& f);
void ReadAndXServerAnalyze(Fields& f);
void WriteAndXClientAnalyze(Fields& f);
void WriteAndXServerAnalyze(Fields& f);
void LockingClientAnalyze(Fields& f);
void LockingServerAnalyze(Fields& f);
void IoCtlClientAnalyze(Fields& f);
void SendMessageAnalyze(Fields& f);

// smb_transaction.cpp
void TransactionClientAnalyze(Fields& f);
void Transaction2ClientAnalyze(Fields& f);
void TransactionServerAnalyze(Fields& f);
void NtTransactionClientAnalyze(Fields& f);
void NtTransactionServerAnalyze(Fields& f);

}  // namespace wirelines::smb
