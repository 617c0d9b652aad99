#include "controls/ole_session.h"

#include <ole2.h>

#include "platform/win32/system_message.h"

namespace tidemark {

OleSession::OleSession() {
    const HRESULT result = ::OleInitialize(nullptr);
    if (FAILED(result)) {
        ThrowSystemError(static_cast<DWORD>(result), "Starting OLE");
    }
}

OleSession::~OleSession() {
    ::OleUninitialize();
}

}  // namespace tidemark
