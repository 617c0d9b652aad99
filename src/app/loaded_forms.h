#pragma once

#include <functional>
#include <string>
#include <vector>

#include "app/shut_down.h"
#include "ui/form.h"

namespace tidemark {

// The program's windows by name, each loaded while its form's window exists.
class LoadedForms final : public LoadedWindows {
  public:
    // The form, not owned, outlives this. `unload` makes its window go.
    void Add(const std::string& name, Form& form, std::function<void()> unload);

    [[nodiscard]] std::vector<std::string> Names() const override;
    void Hide(const std::string& name) override;
    void Unload(const std::string& name) override;

  private:
    struct Entry {
        std::string name;
        Form* form;
        std::function<void()> unload;
    };

    // Null for a name that is unknown or not loaded.
    [[nodiscard]] const Entry* FindLoaded(const std::string& name) const;

    std::vector<Entry> entries_;
};

}  // namespace tidemark
