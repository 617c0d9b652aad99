#pragma once

#include <array>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/program_error.h"
#include "settings/mod_options.h"

namespace tidemark {

// Column headers that keep what they are given.
class FakeListColumns final : public ListColumns {
  public:
    [[nodiscard]] std::int32_t ColumnWidth(int column) const override {
        return widths.at(static_cast<std::size_t>(column));
    }
    void SetColumnWidth(int column, std::int32_t width) override {
        widths.at(static_cast<std::size_t>(column)) = width;
        history.push_back(width);
    }

    std::array<std::int32_t, kCount> widths{};
    std::vector<std::int32_t> history;
};

// A main window without a window: keeps the check marks and writes down what it was asked to do.
class FakeOptionsHost final : public OptionsHost {
  public:
    [[nodiscard]] bool IsChecked(std::string_view item) const override {
        const auto found = checked.find(item);
        return found != checked.end() && found->second;
    }
    void SetChecked(std::string_view item, bool value) override {
        checked[std::string(item)] = value;
        for (const OptionDefinition& definition : OptionDefinitions()) {
            if (definition.item == item) {
                steps.push_back(std::string("check ") + definition.key + Sign(value));
            }
        }
    }
    void ArrangeControls(bool showDateCreated, bool controlsOnTop) override {
        steps.push_back("arrange" + Sign(showDateCreated) + Sign(controlsOnTop));
        if (layout_fails) {
            throw ProgramError(error_number::kInvalidArgument, "no room");
        }
    }
    void SetTopmost(bool on) override {
        steps.push_back("topmost" + Sign(on));
        if (topmost_fails) {
            throw ProgramError(error_number::kInvalidArgument, "no window");
        }
    }
    void Form_Resize() override { steps.emplace_back("resize"); }
    ListColumns& ItemListColumns() override { return item_columns; }
    ListColumns& ErrorsListColumns() override {
        steps.emplace_back("errors window");
        return errors_columns;
    }

    std::map<std::string, bool, std::less<>> checked;
    std::vector<std::string> steps;
    FakeListColumns item_columns;
    FakeListColumns errors_columns;
    bool layout_fails = false;
    bool topmost_fails = false;

  private:
    static std::string Sign(bool value) { return value ? " on" : " off"; }
};

}  // namespace tidemark
