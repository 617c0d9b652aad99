#include "platform/program_error.h"

#include <exception>
#include <new>

namespace tidemark {

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
