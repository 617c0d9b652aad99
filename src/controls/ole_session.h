#pragma once

namespace tidemark {

// OLE for the current thread, for as long as the object lives. Sessions nest; the last one to go
// ends OLE.
class OleSession {
  public:
    // Throws ProgramError when the thread cannot have OLE.
    OleSession();
    OleSession(const OleSession&) = delete;
    OleSession& operator=(const OleSession&) = delete;
    ~OleSession();
};

}  // namespace tidemark
