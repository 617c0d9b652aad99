// What a screen reader finds in the main window.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "mainwindow/main_window_fixture.h"
#include "platform/win32/com_ptr.h"
#include "platform/win32/wide_text.h"
#include "support/com_apartment.h"
#include "support/open_windows.h"

// Needs <objbase.h> before it.
#include <oleacc.h>

namespace tidemark {
namespace {

class Accessibility : public MainWindowTest {
  protected:
    // The controls that Tab goes to, in its order.
    [[nodiscard]] std::vector<HWND> TabStops() {
        std::vector<HWND> stops;
        HWND stop = ::GetNextDlgTabItem(Main().Handle(), nullptr, FALSE);
        while (stop != nullptr && std::find(stops.begin(), stops.end(), stop) == stops.end()) {
            stops.push_back(stop);
            stop = ::GetNextDlgTabItem(Main().Handle(), stop, FALSE);
        }
        return stops;
    }

    // What the control says of itself through the system's interface for screen readers.
    static std::string OwnName(HWND window) {
        ComPtr<IAccessible> control;
        VARIANT self{};
        self.vt = VT_I4;
        self.lVal = CHILDID_SELF;
        BSTR name = nullptr;
        if (FAILED(::AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT),
                                                __uuidof(IAccessible), control.PutVoid())) ||
            FAILED(control->get_accName(self, &name)) || name == nullptr) {
            return {};
        }
        std::string text = Utf8FromWide(name);
        ::SysFreeString(name);
        std::erase(text, '&');
        return text;
    }

    // Buttons carry their name; anything else has that of the label right before it.
    static std::string NameOf(HWND window) {
        if (ClassOf(window) == L"Button") {
            return OwnName(window);
        }
        const HWND label = ::GetWindow(window, GW_HWNDPREV);
        return label != nullptr && ClassOf(label) == L"Static" ? OwnName(label) : std::string();
    }

    ComApartment com_;
};

TEST_F(Accessibility, EveryTabStopHasANameOfItsOwn) {
    LoadWithFiles(1);
    Choose("mnuView", "mnuViewDateCreated");
    std::set<std::string> names;
    for (const HWND stop : TabStops()) {
        const std::string name = NameOf(stop);
        EXPECT_NE(name, "") << Utf8FromWide(ClassOf(stop));
        EXPECT_TRUE(names.insert(name).second) << name;
    }
    EXPECT_THAT(names, ::testing::UnorderedElementsAre("Last Modified:", "Last Modified time",
                                                       "Created:", "Created date", "Created time",
                                                       "Stamp", "Items"));
}

TEST_F(Accessibility, TheProgressBarHasANameToo) {
    Load();
    EXPECT_EQ(NameOf(Main().ProgressBar1.Handle()), "Progress");
}

TEST_F(Accessibility, TheEmptyListSaysWhatToDoWithIt) {
    Load();
    const HWND label = ::GetWindow(Main().OLEDropper1.Handle(), GW_CHILD);
    EXPECT_EQ(OwnName(label), "Drop files to stamp here");
}

}  // namespace
}  // namespace tidemark
