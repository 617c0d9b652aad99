#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "errors/error_rows.h"
#include "lists/fakes.h"
#include "platform/memory/memory_system.h"

namespace tidemark {

// Writes down what is shown.
class RecordedDisplay final : public ErrorsDisplay {
  public:
    std::string status = "as it was";
    bool redraw = true;
    std::vector<std::string> log;

    void SetStatusText(const std::string& text) override {
        status = text;
        log.push_back(text);
    }
    void SetListRedraw(bool on) override {
        redraw = on;
        log.emplace_back(on ? "redraw on" : "redraw off");
    }
};

// The rows of the errors window on a system in memory. C:\ is there and empty.
class ErrorRowsFixture : public testing::Test {
  protected:
    ErrorRowsFixture() { system.volume.AddFolder("C:\\"); }

    // Records of existing files C:\dir\0.txt, C:\dir\1.txt ...
    StampErrorList Records(std::size_t count) {
        StampErrorList errors;
        for (std::size_t i = 0; i < count; ++i) {
            const std::string path = "C:\\dir\\" + std::to_string(i) + ".txt";
            system.volume.AddFile(path);
            errors.push_back(Record(path));
        }
        return errors;
    }
    static std::shared_ptr<const StampError> Record(const std::string& path,
                                                    std::int32_t number = 5,
                                                    const std::string& text = "Access denied.") {
        return std::make_shared<StampError>(StampError{path, false, number, text});
    }
    // Hands the records over and lets the fill run.
    void Show(StampErrorList errors) {
        rows->AddFromCollection(std::move(errors));
        system.pump.RunFor(ErrorRows::kFillDelay);
    }
    [[nodiscard]] ListModel& List() { return rows->List(); }
    [[nodiscard]] std::vector<std::string> Column(ErrorColumn column) {
        std::vector<std::string> texts;
        for (std::size_t i = 0; i < List().Count(); ++i) {
            const ListRow& row = List().At(i);
            texts.push_back(column == ErrorColumn::kName
                                ? row.text
                                : row.sub_items[static_cast<std::size_t>(column) - 1]);
        }
        return texts;
    }

    MemorySystem system{};
    FakePictures icons{system.file_system};
    KeyedImageList images{icons};
    RecordedDisplay display{};
    std::shared_ptr<ErrorRows> rows = ErrorRows::Create(system.Parts(), images, display);
};

}  // namespace tidemark
