#include "ui/menu.h"

#include <algorithm>

#include "platform/program_error.h"
#include "platform/raise.h"
#include "platform/win32/system_message.h"
#include "platform/win32/wide_text.h"
#include "ui/window.h"

namespace tidemark {
namespace {

// Above the identifiers of controls and of shell menus, below those of system commands.
constexpr UINT kFirstId = 0x8001;

HMENU OrThrow(HMENU menu) {
    if (menu == nullptr) {
        ThrowSystemError(::GetLastError(), "Creating a menu");
    }
    return menu;
}

}  // namespace

MenuItem::MenuItem(Menu& menu, const MenuRow& row, UINT id)
    : menu_(menu), name_(row.name), caption_(row.caption), id_(id) {}

HMENU MenuItem::Holder() const {
    return parent_ != nullptr ? parent_->popup_.Get() : menu_.Bar();
}

UINT MenuItem::State() const {
    if (!visible_) {
        return state_out_of_bar_;
    }
    MENUITEMINFOW info{};
    info.cbSize = sizeof(info);
    info.fMask = MIIM_STATE;
    ::GetMenuItemInfoW(Holder(), id_, FALSE, &info);
    return info.fState;
}

void MenuItem::SetCaption(std::string_view caption) {
    if (caption == caption_) {
        return;
    }
    caption_ = caption;
    std::wstring text = WideFromUtf8(caption);
    MENUITEMINFOW info{};
    info.cbSize = sizeof(info);
    info.fMask = MIIM_STRING;
    info.dwTypeData = text.data();
    ::SetMenuItemInfoW(Holder(), id_, FALSE, &info);
    if (parent_ == nullptr) {
        menu_.RedrawBar();
    }
}

bool MenuItem::Enabled() const {
    return (State() & MFS_DISABLED) == 0;
}

void MenuItem::SetEnabled(bool enabled) {
    if (enabled == Enabled()) {
        return;
    }
    if (!visible_) {
        constexpr UINT kDisabled = MFS_DISABLED;
        state_out_of_bar_ =
            enabled ? state_out_of_bar_ & ~kDisabled : state_out_of_bar_ | kDisabled;
        return;
    }
    ::EnableMenuItem(Holder(), id_,
                     static_cast<UINT>(MF_BYCOMMAND | (enabled ? MF_ENABLED : MF_GRAYED)));
    if (parent_ == nullptr) {
        menu_.RedrawBar();
    }
}

bool MenuItem::Checked() const {
    return (State() & MFS_CHECKED) != 0;
}

void MenuItem::SetChecked(bool checked) {
    ::CheckMenuItem(Holder(), id_,
                    static_cast<UINT>(MF_BYCOMMAND | (checked ? MF_CHECKED : MF_UNCHECKED)));
}

void MenuItem::SetVisible(bool visible) {
    if (visible == visible_ || parent_ != nullptr) {
        return;
    }
    if (visible) {
        menu_.InsertTop(*this);
    } else {
        state_out_of_bar_ = State();
        // Takes the menu out of the bar without destroying it.
        ::RemoveMenu(menu_.Bar(), id_, MF_BYCOMMAND);
    }
    visible_ = visible;
    menu_.RedrawBar();
}

// NOLINTNEXTLINE(readability-make-member-function-const): what the handler does changes the item.
void MenuItem::Click() {
    if (Enabled()) {
        Raise(on_click);
    }
}

Menu::Menu(const std::vector<MenuRow>& rows) : bar_(OrThrow(::CreateMenu())) {
    MenuItem* top = nullptr;
    for (const MenuRow& row : rows) {
        const bool known = std::any_of(items_.begin(), items_.end(),
                                       [&](const auto& item) { return item->name_ == row.name; });
        if (known) {
            throw ProgramError(error_number::kDuplicateKey,
                               std::string("Menu item name used twice: ") + row.name);
        }
        const UINT id = kFirstId + static_cast<UINT>(items_.size());
        items_.push_back(std::unique_ptr<MenuItem>(new MenuItem(*this, row, id)));
        MenuItem& item = *items_.back();
        if (row.level == 0) {
            top = &item;
            item.popup_.Reset(OrThrow(::CreatePopupMenu()));
            InsertTop(item);
        } else {
            if (top == nullptr) {
                throw ProgramError(error_number::kInvalidArgument,
                                   std::string("Menu item outside a menu: ") + row.name);
            }
            item.parent_ = top;
            const bool separator = item.caption_ == "-";
            if (!::AppendMenuW(top->popup_.Get(), separator ? MF_SEPARATOR : MF_STRING, id,
                               separator ? nullptr : WideFromUtf8(item.caption_).c_str())) {
                ThrowSystemError(::GetLastError(), "Adding a menu item");
            }
        }
    }
}

Menu::~Menu() {
    // The bar would take its menus along; each is owned by its item.
    while (::RemoveMenu(bar_.Get(), 0, MF_BYPOSITION)) {
    }
}

void Menu::InsertTop(MenuItem& top) {
    UINT position = 0;
    for (const auto& item : items_) {
        if (item.get() == &top) {
            break;
        }
        position += item->parent_ == nullptr && item->visible_ ? 1U : 0U;
    }
    std::wstring text = WideFromUtf8(top.caption_);
    MENUITEMINFOW info{};
    info.cbSize = sizeof(info);
    info.fMask = MIIM_ID | MIIM_STATE | MIIM_STRING | MIIM_SUBMENU;
    info.fState = top.state_out_of_bar_;
    info.wID = top.id_;
    info.hSubMenu = top.popup_.Get();
    info.dwTypeData = text.data();
    if (!::InsertMenuItemW(bar_.Get(), position, TRUE, &info)) {
        ThrowSystemError(::GetLastError(), "Adding a menu");
    }
}

MenuItem& Menu::operator[](std::string_view name) const {
    for (const auto& item : items_) {
        if (item->name_ == name) {
            return *item;
        }
    }
    throw ProgramError(error_number::kInvalidArgument, "No menu item " + std::string(name));
}

// NOLINTNEXTLINE(readability-make-member-function-const): a chosen item's handler changes it.
void Menu::PopUp(MenuItem& top, const Window& owner, Point at) {
    POINT point{at.x, at.y};
    if (at == kAtPointer) {
        ::GetCursorPos(&point);
    }
    const UINT chosen = static_cast<UINT>(::TrackPopupMenu(top.popup_.Get(), TPM_RETURNCMD, point.x,
                                                           point.y, 0, owner.Handle(), nullptr));
    if (chosen != 0) {
        Click(chosen);
    }
}

void Menu::AttachTo(const Window& window) {
    window_ = window.Handle();
}

bool Menu::Open(HMENU popup) const {
    for (const auto& item : items_) {
        if (item->popup_ && item->popup_.Get() == popup) {
            Raise(item->on_open);
            return true;
        }
    }
    return false;
}

bool Menu::Click(UINT id) const {
    const auto found = std::find_if(items_.begin(), items_.end(),
                                    [&](const auto& item) { return item->id_ == id; });
    if (found == items_.end()) {
        return false;
    }
    (*found)->Click();
    return true;
}

void Menu::RedrawBar() const {
    if (::IsWindow(window_)) {
        ::DrawMenuBar(window_);
    }
}

}  // namespace tidemark
