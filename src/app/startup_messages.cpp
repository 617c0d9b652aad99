#include "app/startup_messages.h"

#include <exception>
#include <new>

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

ProgramError CurrentError() {
    try {
        throw;
    } catch (const ProgramError& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return {error_number::kOutOfMemory, "Out of memory"};
    } catch (const std::exception& error) {
        return {error_number::kInternalError, error.what()};
    } catch (...) {
        return {error_number::kInternalError, "Internal error"};
    }
}

}  // namespace tidemark
