#include "app/loaded_forms.h"

#include <utility>

namespace tidemark {

void LoadedForms::Add(const std::string& name, Form& form, std::function<void()> unload) {
    entries_.push_back({name, &form, std::move(unload)});
}

std::vector<std::string> LoadedForms::Names() const {
    std::vector<std::string> names;
    for (const Entry& entry : entries_) {
        if (entry.form->Exists()) {
            names.push_back(entry.name);
        }
    }
    return names;
}

void LoadedForms::Hide(const std::string& name) {
    if (const Entry* const entry = FindLoaded(name)) {
        entry->form->SetVisible(false);
    }
}

void LoadedForms::Unload(const std::string& name) {
    if (const Entry* const entry = FindLoaded(name)) {
        entry->unload();
    }
}

const LoadedForms::Entry* LoadedForms::FindLoaded(const std::string& name) const {
    for (const Entry& entry : entries_) {
        if (entry.name == name && entry.form->Exists()) {
            return &entry;
        }
    }
    return nullptr;
}

}  // namespace tidemark
