// The program's entry point.

#include "app/application.h"
#include "platform/win32/win32_process.h"
#include "ui/last_resort.h"

int WINAPI wWinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, PWSTR /*arguments*/,
                    int /*show*/) {
    // A call on a drive whose card or disc is out fails, as any other does; by default the system
    // would first ask for the disc in a box of its own, once for each such call, and wait for an
    // answer. Only for this thread, which does all the work: programs that it starts inherit the
    // mode of the process.
    ::SetThreadErrorMode(SEM_FAILCRITICALERRORS, nullptr);
    try {
        tidemark::Win32Process process;
        return tidemark::Application(process).Run();
    } catch (...) {
        tidemark::ReportToLastResort(/*owner=*/nullptr);
        return 1;
    }
}
