#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/geometry.h"
#include "ui/gdi.h"

namespace tidemark {

class Menu;
class Window;

// In place of a point of the screen: where the pointer is when the popup opens.
inline constexpr Point kAtPointer{-1, -1};

// One line of a menu table. A row of level 0 is a top-level menu; rows of level 1 below it are its
// items. The caption "-" makes a separator, a tab in a caption puts what follows to the right, and
// "&" marks the mnemonic.
struct MenuRow {
    int level = 0;
    const char* name = nullptr;
    const char* caption = nullptr;
};

// One top-level menu or one item of it. Its states live in the system's menu, so what is read is
// what the user sees; a top-level menu out of the bar keeps its own until it is back.
class MenuItem {
  public:
    MenuItem(const MenuItem&) = delete;
    MenuItem& operator=(const MenuItem&) = delete;

    std::function<void()> on_click;  // an item was chosen
    std::function<void()> on_open;   // a top-level menu is about to drop down or pop up
    std::string tag;                 // the program's own text

    [[nodiscard]] const std::string& Caption() const { return caption_; }
    void SetCaption(std::string_view caption);
    [[nodiscard]] bool Enabled() const;
    void SetEnabled(bool enabled);
    // Items only.
    [[nodiscard]] bool Checked() const;
    void SetChecked(bool checked);
    // Top-level menus only: whether the menu stands in the bar. A hidden one can still pop up.
    void SetVisible(bool visible);
    // As if the user chose the item; nothing while it is disabled.
    void Click();

    [[nodiscard]] UINT Id() const { return id_; }

  private:
    friend class Menu;
    MenuItem(Menu& menu, const MenuRow& row, UINT id);
    [[nodiscard]] HMENU Holder() const;  // the system's menu that this item is in
    [[nodiscard]] UINT State() const;

    Menu& menu_;
    std::string name_;
    std::string caption_;  // of a top-level menu, while it is out of the bar too
    UINT id_;
    UniqueMenu popup_;            // of a top-level menu
    MenuItem* parent_ = nullptr;  // of an item
    bool visible_ = true;
    UINT state_out_of_bar_ = 0;  // MFS_ bits, while it is not visible
};

// A menu bar with its menus, built from a table; items are reached by their names.
class Menu {
  public:
    // Names are unique. Throws ProgramError for a repeated name (duplicate key), an item before the
    // first top-level menu (invalid argument), or with the system's code.
    explicit Menu(const std::vector<MenuRow>& rows);
    Menu(const Menu&) = delete;
    Menu& operator=(const Menu&) = delete;
    ~Menu();

    // The item of that name; throws ProgramError (invalid argument) for a name that is not there.
    // Items stay where they are in memory.
    [[nodiscard]] MenuItem& operator[](std::string_view name) const;

    // Pops a top-level menu up over `owner`, at a screen point or kAtPointer, and, once it has
    // closed, runs the chosen item's handler.
    void PopUp(MenuItem& top, const Window& owner, Point at);

    // The bar, and what the window that shows it hands on.
    [[nodiscard]] HMENU Bar() const { return bar_.Get(); }
    void AttachTo(const Window& window);
    // A menu is about to open; a stranger's is left alone (false).
    bool Open(HMENU popup) const;
    // An item was chosen; false for an identifier that is none of this menu's.
    // NOLINTNEXTLINE(modernize-use-nodiscard): what a popup of this menu returns is one of its own.
    bool Click(UINT id) const;

  private:
    friend class MenuItem;
    void InsertTop(MenuItem& top);
    void RedrawBar() const;

    UniqueMenu bar_;
    std::vector<std::unique_ptr<MenuItem>> items_;  // in table order
    HWND window_ = nullptr;
};

}  // namespace tidemark
