#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string_view>

#include "controls/property_bag.h"
#include "ui/control.h"
#include "ui/gdi.h"
#include "ui/hosted_window.h"

namespace tidemark {

// A rectangle of its background colour framed by three-dimensional edges, with a style of its own
// for each side. It is drawn once, off the screen, whenever a style or the size changes; painting
// only shows that picture. At run time the mouse does not see it.
class DrawEdge final : public Control, private MessageHandler {
  public:
    // Colours are 0x00BBGGRR, or 0x800000NN for the system's colour NN.
    using Colour = std::uint32_t;
    static constexpr Colour kButtonFace = 0x8000000F;
    static constexpr std::int32_t kDefaultStyle = 1;  // raised outer edge

    // Where the control stands: in a window being designed it is hit by the mouse.
    enum class Mode { kRunTime, kDesign };

    // The system's edge drawing, or a stand-in with its arguments and result.
    using EdgeRoutine = std::function<bool(HDC hdc, RECT& rect, UINT edges, UINT flags)>;

    explicit DrawEdge(Mode mode = Mode::kRunTime);
    DrawEdge(Mode mode, EdgeRoutine routine);
    ~DrawEdge() override;

    // Creates the control in `site`. Throws ProgramError when it cannot be created, and when there
    // is one already.
    void Create(ControlSite& site, const ControlSpec& spec);

    // Draws edges on a Windows DC; the system's result.
    bool DrawEdges(HDC hdc, int Left, int Top, int Right, int Bottom, std::int32_t Edges,
                   std::int32_t Flags) const;
    // Forces a complete update and repaint of the control.
    void Refresh();

    // The background fill. A new colour shows when the picture is next drawn.
    [[nodiscard]] Colour BackColor() const { return back_color_; }
    void SetBackColor(Colour colour);

    // Sets/returns the edge style for all edges; -1 when they differ.
    [[nodiscard]] std::int32_t Edge() const;
    void SetEdge(std::int32_t style);

    // Sets/returns a value describing how to modify the styles for each edge.
    [[nodiscard]] std::int32_t Flags() const { return flags_; }
    void SetFlags(std::int32_t flags);

    // Sets/returns the edge style for the left, top, right and bottom edge.
    [[nodiscard]] std::int32_t EdgeLeft() const { return left_; }
    void SetEdgeLeft(std::int32_t style);
    [[nodiscard]] std::int32_t EdgeTop() const { return top_; }
    void SetEdgeTop(std::int32_t style);
    [[nodiscard]] std::int32_t EdgeRight() const { return right_; }
    void SetEdgeRight(std::int32_t style);
    [[nodiscard]] std::int32_t EdgeBottom() const { return bottom_; }
    void SetEdgeBottom(std::int32_t style);

    // The pointer over the control: 0 the window's own, 1 to 15 the system's, 99 MouseIcon.
    [[nodiscard]] std::int32_t MousePointer() const { return mouse_pointer_; }
    void SetMousePointer(std::int32_t pointer);
    [[nodiscard]] const SharedCursor& MouseIcon() const { return mouse_icon_; }
    void SetMouseIcon(SharedCursor icon);

    // The control's device context, which it keeps for its whole life, and its window.
    [[nodiscard]] HDC hdc() const { return dc_; }
    [[nodiscard]] HWND hwnd() const { return Handle(); }

    // Reads and writes the properties under their names. What is not kept is at its default.
    void ReadProperties(const PropertyBag& bag);
    void WriteProperties(PropertyBag& bag) const;

    // A property has changed and wants to be kept. The handler may destroy the control.
    std::function<void(std::string_view name)> PropertyChanged;

  private:
    LRESULT OnMessage(HWND window, UINT message, WPARAM wparam, LPARAM lparam) override;
    void ChangeStyle(std::int32_t& style, std::int32_t value, std::string_view name);
    void TellAndRender(std::initializer_list<std::string_view> changed);
    void Render();
    [[nodiscard]] COLORREF FillColour() const;
    void DrawPicture(HDC dc, Size size) const;
    void Paint(HWND window) const;
    [[nodiscard]] bool ShowPointer() const;

    const std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);  // for handlers that end it
    Mode mode_;
    EdgeRoutine routine_;
    HDC dc_ = nullptr;
    UniqueBitmap picture_;
    Colour back_color_ = kButtonFace;
    std::int32_t flags_ = 0;
    std::int32_t left_ = kDefaultStyle;
    std::int32_t top_ = kDefaultStyle;
    std::int32_t right_ = kDefaultStyle;
    std::int32_t bottom_ = kDefaultStyle;
    std::int32_t mouse_pointer_ = 0;
    SharedCursor mouse_icon_;
};

}  // namespace tidemark
