#include "app/startup_messages.h"

namespace tidemark {

std::string MissingRuntimeText() {
    return std::string(
               "The Microsoft Scripting Runtime is not available.\n"
               "\n"
               "This library is needed for the tidemark to function.\n"
               "You can download the latest version from Microsoft \n"
               "at:  ") +
           kRuntimeDownloadLocation +
           "\n"
           "\n"
           "The tidemark will now exit.";
}

std::string StartupErrorText(const ProgramError& error) {
    return "Error: " + std::to_string(error.Number()) + "\n" + error.Description() +
           "\n\nSource: main";
}

}  // namespace tidemark
