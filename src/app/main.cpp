// The program's entry point.

#include "app/application.h"
#include "ui/last_resort.h"

int WINAPI wWinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, PWSTR /*arguments*/,
                    int /*show*/) {
    try {
        return tidemark::Application().Run();
    } catch (...) {
        tidemark::ReportToLastResort(/*owner=*/nullptr);
        return 1;
    }
}
