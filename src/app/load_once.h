#pragma once

namespace tidemark {

// Loads a form of the program unless it is loaded. One whose loading fails half-way is destroyed,
// so that loading it can be tried again.
template <typename LoadedForm>
void LoadOnce(LoadedForm& form) {
    if (form.Exists()) {
        return;
    }
    try {
        form.Form_Load();
    } catch (...) {
        form.Destroy();
        throw;
    }
}

}  // namespace tidemark
