#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/memory/memory_user_locale.h"
#include "support/pump.h"
#include "support/row_state.h"
#include "support/shown_list.h"
#include "support/test_form.h"
#include "ui/list_view.h"

namespace tidemark {

// A visible list over a model of its own, and what the list really shows.
class ListViewTest : public testing::Test {
  protected:
    ListViewTest() {
        ControlSpec spec;
        spec.bounds = {10, 10, 460, 300};
        list_->Create(form_, spec,
                      {{"Name", 200}, {"Error", 80, /*right_aligned=*/true}, {"Description", 120}});
        form_.SetVisible(true);
        PumpPending();
    }

    static std::string Name(std::size_t i) { return "row " + std::to_string(i); }

    void Fill(std::size_t count) {
        for (std::size_t i = model_.Count(); i < count; ++i) {
            model_.Add(Name(i), Name(i));
        }
    }
    LRESULT Count() const { return list_->Send(LVM_GETITEMCOUNT); }
    std::string Cell(int row, int column) const { return ShownCell(*list_, row, column); }
    bool ShownState(int row, UINT state) const {
        return list_->Send(LVM_GETITEMSTATE, static_cast<WPARAM>(row),
                           static_cast<LPARAM>(state)) != 0;
    }
    void Select(std::size_t row) const { ChangeRowState(*list_, row, LVIS_SELECTED, true); }
    void MakeCurrent(std::size_t row) const { ChangeRowState(*list_, row, LVIS_FOCUSED, true); }
    LRESULT ShownFocus() const {
        return list_->Send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED);
    }
    RECT RowRect(int row) const { return PlaceOfRow(*list_, row); }
    Point Inside(int row) const {
        const RECT rect = RowRect(row);
        return {rect.left + 30, (rect.top + rect.bottom) / 2};
    }
    static LPARAM At(Point point) { return MAKELPARAM(point.x, point.y); }
    void Key(int key) const {
        list_->Send(WM_KEYDOWN, static_cast<WPARAM>(key));
        list_->Send(WM_KEYUP, static_cast<WPARAM>(key));
    }
    void Click(Point point, WPARAM keys = 0) const {
        // The list may track the button in a loop of its own, so the release waits in the queue.
        list_->Post(WM_LBUTTONDOWN, MK_LBUTTON | keys, At(point));
        list_->Post(WM_LBUTTONUP, keys, At(point));
        PumpPending();
    }
    // The area that waits to be painted, once everything was.
    void PaintAll() const {
        PumpPending();
        ::UpdateWindow(list_->Handle());
        ::ValidateRect(list_->Handle(), nullptr);
    }
    RECT Unpainted() const {
        RECT rect{};
        ::GetUpdateRect(list_->Handle(), &rect, FALSE);
        return rect;
    }
    std::vector<std::string> Selected() const {
        std::vector<std::string> texts;
        for (std::size_t i = 0; i < model_.Count(); ++i) {
            if (model_.At(i).selected) {
                texts.push_back(model_.At(i).text);
            }
        }
        return texts;
    }

    MemoryUserLocale locale_{};
    ListModel model_{locale_};
    ImageList images_{[](const std::string& /*path*/) {
        return UniqueIcon(::CopyIcon(::LoadIconW(nullptr, IDI_APPLICATION)));
    }};
    TestForm form_{};
    std::unique_ptr<ListView> list_ = std::make_unique<ListView>(model_, images_);
};

}  // namespace tidemark
