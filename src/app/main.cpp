// The program's entry point.

#include "app/application.h"
#include "platform/win32/win32_process.h"
#include "ui/last_resort.h"

int WINAPI wWinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, PWSTR /*arguments*/,
                    int /*show*/) {
    try {
        tidemark::Win32Process process;
        return tidemark::Application(process).Run();
    } catch (...) {
        tidemark::ReportToLastResort(/*owner=*/nullptr);
        return 1;
    }
}
