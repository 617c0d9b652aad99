#include "controls/draw_edge.h"

#include <olectl.h>

#include <array>
#include <utility>

#include "controls/edge_groups.h"
#include "platform/raise.h"

namespace tidemark {
namespace {

constexpr std::int32_t kCustomPointer = 99;
constexpr std::int16_t kPixelScale = 3;  // the coordinate mode: pixels

// A device context in memory, like the screen's.
class MemoryContext {
  public:
    MemoryContext() : dc_(::CreateCompatibleDC(nullptr)) {}
    MemoryContext(const MemoryContext&) = delete;
    MemoryContext& operator=(const MemoryContext&) = delete;
    ~MemoryContext() { ::DeleteDC(dc_); }

    [[nodiscard]] HDC Get() const { return dc_; }

  private:
    HDC dc_;
};

// Selects an object into a context and puts the old one back.
class Selection {
  public:
    Selection(HDC dc, HGDIOBJ object) : dc_(dc), before_(::SelectObject(dc, object)) {}
    Selection(const Selection&) = delete;
    Selection& operator=(const Selection&) = delete;
    ~Selection() { ::SelectObject(dc_, before_); }

  private:
    HDC dc_;
    HGDIOBJ before_;
};

bool SystemRoutine(HDC hdc, RECT& rect, UINT edges, UINT flags) {
    return ::DrawEdge(hdc, &rect, edges, flags) != FALSE;
}

UniqueBitmap ScreenBitmap(Size size) {
    const HDC screen = ::GetDC(nullptr);
    const int planes = ::GetDeviceCaps(screen, PLANES);
    const int bits = ::GetDeviceCaps(screen, BITSPIXEL);
    ::ReleaseDC(nullptr, screen);
    return UniqueBitmap(::CreateBitmap(size.width, size.height, static_cast<UINT>(planes),
                                       static_cast<UINT>(bits), nullptr));
}

// The system's pointers by the numbers of MousePointer; 0 for the numbers that have none.
WORD SystemPointer(std::int32_t pointer) {
    constexpr std::array<WORD, 16> kPointers{
        0,      // default
        32512,  // 1 arrow
        32515,  // 2 cross
        32513,  // 3 text
        32512,  // 4 icon: the system has no such pointer any more
        32646,  // 5 size in all directions
        32643,  // 6 size north-east to south-west
        32645,  // 7 size north to south
        32642,  // 8 size north-west to south-east
        32644,  // 9 size west to east
        32516,  // 10 up
        32514,  // 11 wait
        32648,  // 12 no drop
        32650,  // 13 arrow and wait
        32651,  // 14 arrow and question
        32646,  // 15 size in all directions
    };
    if (pointer < 0 || static_cast<std::size_t>(pointer) >= kPointers.size()) {
        return 0;
    }
    return kPointers[static_cast<std::size_t>(pointer)];
}

// A kept number of either width.
std::int32_t NumberOf(const PropertyValue& value, std::int32_t fallback) {
    if (const auto* number = std::get_if<std::int32_t>(&value)) {
        return *number;
    }
    if (const auto* number = std::get_if<std::int16_t>(&value)) {
        return *number;
    }
    return fallback;
}

std::int32_t ReadNumber(const PropertyBag& bag, std::string_view name, std::int32_t fallback) {
    return NumberOf(bag.ReadProperty(name, fallback), fallback);
}

}  // namespace

DrawEdge::DrawEdge(Mode mode) : DrawEdge(mode, SystemRoutine) {}

DrawEdge::DrawEdge(Mode mode, EdgeRoutine routine) : mode_(mode), routine_(std::move(routine)) {}

DrawEdge::~DrawEdge() {
    *alive_ = false;
    // Here, not in the base: until the window is gone its messages need this part of the object.
    Destroy();
}

void DrawEdge::Create(ControlSite& site, const ControlSpec& spec) {
    HostedWindowSpec window = SpecIn(site, spec);
    window.class_name = L"TidemarkDrawEdge";
    // Its own device context: hdc() stays the same and needs no giving back.
    window.class_style = CS_OWNDC;
    window.background = -1;
    Adopt(site, CreateHostedWindow(*this, window));
    dc_ = ::GetDC(Handle());
    Render();
}

bool DrawEdge::DrawEdges(HDC hdc, int Left, int Top, int Right, int Bottom, std::int32_t Edges,
                         std::int32_t Flags) const {
    RECT rect{Left, Top, Right, Bottom};
    return routine_(hdc, rect, static_cast<UINT>(Edges), static_cast<UINT>(Flags));
}

void DrawEdge::Refresh() {
    Render();
}

void DrawEdge::SetBackColor(Colour colour) {
    back_color_ = colour;
    Raise(PropertyChanged, "BackColor");
}

std::int32_t DrawEdge::Edge() const {
    return left_ == top_ && left_ == right_ && left_ == bottom_ ? left_ : -1;
}

void DrawEdge::SetEdge(std::int32_t style) {
    left_ = top_ = right_ = bottom_ = style;
    TellAndRender({"EdgeLeft", "EdgeTop", "EdgeRight", "EdgeBottom"});
}

void DrawEdge::ChangeStyle(std::int32_t& style, std::int32_t value, std::string_view name) {
    style = value;
    TellAndRender({name});
}

void DrawEdge::TellAndRender(std::initializer_list<std::string_view> changed) {
    const std::shared_ptr<const bool> alive = alive_;
    for (const std::string_view name : changed) {
        Raise(PropertyChanged, name);
        if (!*alive) {
            return;
        }
    }
    Render();
}

void DrawEdge::SetFlags(std::int32_t flags) {
    ChangeStyle(flags_, flags, "Flags");
}

void DrawEdge::SetEdgeLeft(std::int32_t style) {
    ChangeStyle(left_, style, "EdgeLeft");
}

void DrawEdge::SetEdgeTop(std::int32_t style) {
    ChangeStyle(top_, style, "EdgeTop");
}

void DrawEdge::SetEdgeRight(std::int32_t style) {
    ChangeStyle(right_, style, "EdgeRight");
}

void DrawEdge::SetEdgeBottom(std::int32_t style) {
    ChangeStyle(bottom_, style, "EdgeBottom");
}

void DrawEdge::SetMousePointer(std::int32_t pointer) {
    mouse_pointer_ = pointer;
    Raise(PropertyChanged, "MousePointer");
}

void DrawEdge::SetMouseIcon(SharedCursor icon) {
    mouse_icon_ = std::move(icon);
    Raise(PropertyChanged, "MouseIcon");
}

void DrawEdge::ReadProperties(const PropertyBag& bag) {
    flags_ = ReadNumber(bag, "Flags", 0);
    left_ = ReadNumber(bag, "EdgeLeft", kDefaultStyle);
    top_ = ReadNumber(bag, "EdgeTop", kDefaultStyle);
    right_ = ReadNumber(bag, "EdgeRight", kDefaultStyle);
    bottom_ = ReadNumber(bag, "EdgeBottom", kDefaultStyle);
    back_color_ =
        static_cast<Colour>(ReadNumber(bag, "BackColor", static_cast<std::int32_t>(kButtonFace)));
    mouse_pointer_ = ReadNumber(bag, "MousePointer", 0);
    const PropertyValue icon = bag.ReadProperty("MouseIcon", SharedCursor());
    mouse_icon_ =
        std::holds_alternative<SharedCursor>(icon) ? std::get<SharedCursor>(icon) : SharedCursor();
    Render();
}

void DrawEdge::WriteProperties(PropertyBag& bag) const {
    bag.WriteProperty("Flags", flags_);
    bag.WriteProperty("EdgeLeft", left_);
    bag.WriteProperty("EdgeTop", top_);
    bag.WriteProperty("EdgeRight", right_);
    bag.WriteProperty("EdgeBottom", bottom_);
    bag.WriteProperty("BackColor", static_cast<std::int32_t>(back_color_),
                      static_cast<std::int32_t>(kButtonFace));
    bag.WriteProperty("MousePointer", static_cast<std::int16_t>(mouse_pointer_), std::int16_t{0});
    bag.WriteProperty("MouseIcon", mouse_icon_, SharedCursor());
    bag.WriteProperty("ScaleMode", kPixelScale, kPixelScale);
}

LRESULT DrawEdge::OnMessage(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
        case WM_NCHITTEST:
            return mode_ == Mode::kDesign ? HTCLIENT : HTTRANSPARENT;
        case WM_SIZE:
            Render();
            return 0;
        case WM_ERASEBKGND:
            return 1;  // the picture covers everything
        case WM_PAINT:
            Paint(window);
            return 0;
        case WM_SETCURSOR:
            if (LOWORD(lparam) == HTCLIENT && ShowPointer()) {
                return TRUE;
            }
            break;
        case WM_NCDESTROY:
            dc_ = nullptr;
            picture_.Reset();
            break;
        default:
            break;
    }
    return ::DefWindowProcW(window, message, wparam, lparam);
}

void DrawEdge::Render() {
    const Size size = ClientSize();
    if (Handle() == nullptr || size.width <= 0 || size.height <= 0) {
        picture_.Reset();
        return;
    }
    UniqueBitmap picture = ScreenBitmap(size);
    {
        const MemoryContext memory;
        const Selection bitmap(memory.Get(), picture.Get());
        DrawPicture(memory.Get(), size);
    }
    picture_ = std::move(picture);
    Invalidate();
    ::UpdateWindow(Handle());
}

COLORREF DrawEdge::FillColour() const {
    COLORREF colour = 0;
    ::OleTranslateColor(back_color_, nullptr, &colour);
    return colour;
}

void DrawEdge::DrawPicture(HDC dc, Size size) const {
    const COLORREF colour = FillColour();
    const UniqueBrush brush(::CreateSolidBrush(colour));
    const UniquePen pen(::CreatePen(PS_SOLID, 1, colour));
    const Selection with_brush(dc, brush.Get());
    const Selection with_pen(dc, pen.Get());
    ::Rectangle(dc, 0, 0, size.width, size.height);

    // One rectangle for all calls: a flag may ask the system to shrink it, and then later edges go
    // inside the earlier ones.
    RECT rect{0, 0, size.width, size.height};
    for (const EdgeGroup& group : EdgeGroups(left_, top_, right_, bottom_)) {
        routine_(dc, rect, static_cast<UINT>(group.style), static_cast<UINT>(flags_) | group.sides);
    }
}

void DrawEdge::Paint(HWND window) const {
    PAINTSTRUCT paint{};
    const HDC dc = ::BeginPaint(window, &paint);
    if (picture_) {
        const MemoryContext memory;
        const Selection bitmap(memory.Get(), picture_.Get());
        const RECT& part = paint.rcPaint;
        ::BitBlt(dc, part.left, part.top, part.right - part.left, part.bottom - part.top,
                 memory.Get(), part.left, part.top, SRCCOPY);
    }
    ::EndPaint(window, &paint);
}

bool DrawEdge::ShowPointer() const {
    if (mouse_pointer_ == kCustomPointer) {
        if (mouse_icon_) {
            ::SetCursor(mouse_icon_.get());
        }
        return mouse_icon_ != nullptr;
    }
    const WORD pointer = SystemPointer(mouse_pointer_);
    if (pointer == 0) {
        return false;
    }
    ::SetCursor(::LoadCursorW(nullptr, MAKEINTRESOURCEW(pointer)));
    return true;
}

}  // namespace tidemark
