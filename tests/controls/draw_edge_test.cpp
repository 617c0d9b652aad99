#include "controls/draw_edge.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <map>

#include "controls/memory_property_bag.h"
#include "platform/program_error.h"
#include "support/pump.h"
#include "support/test_form.h"

namespace tidemark {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

constexpr int kWidth = 41;
constexpr int kHeight = 33;
using Pixels = std::vector<std::uint32_t>;

// The pixels of a context's top left corner, row by row.
Pixels PixelsOf(HDC dc, int width = kWidth, int height = kHeight) {
    Pixels pixels;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            pixels.push_back(::GetPixel(dc, x, y));
        }
    }
    return pixels;
}

// A picture in memory that is filled with a colour and drawn on by the system itself.
class Picture {
  public:
    explicit Picture(COLORREF fill) : dc_(::CreateCompatibleDC(nullptr)) {
        const HDC screen = ::GetDC(nullptr);
        bitmap_.Reset(::CreateCompatibleBitmap(screen, kWidth, kHeight));
        ::ReleaseDC(nullptr, screen);
        before_ = ::SelectObject(dc_, bitmap_.Get());
        const UniqueBrush brush(::CreateSolidBrush(fill));
        const RECT all{0, 0, kWidth, kHeight};
        ::FillRect(dc_, &all, brush.Get());
    }
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;
    ~Picture() {
        ::SelectObject(dc_, before_);
        ::DeleteDC(dc_);
    }
    [[nodiscard]] HDC Dc() const { return dc_; }

  private:
    HDC dc_;
    HGDIOBJ before_ = nullptr;
    UniqueBitmap bitmap_;
};

struct Call {
    RECT rect;
    UINT edges;
    UINT flags;
};

class DrawEdgeTest : public ::testing::Test {
  protected:
    DrawEdgeTest() {
        form_.SetVisible(true);
        Create(control_);
        calls_.clear();
    }

    void Create(DrawEdge& control) {
        ControlSpec spec;
        spec.bounds = {10, 10, kWidth, kHeight};
        control.Create(form_, spec);
    }

    DrawEdge::EdgeRoutine Recorder() {
        return [this](HDC hdc, RECT& rect, UINT edges, UINT flags) {
            calls_.push_back({rect, edges, flags});
            return ::DrawEdge(hdc, &rect, edges, flags) != FALSE;
        };
    }

    void SetStyles(std::array<std::int32_t, 4> styles) {
        control_.SetEdgeLeft(styles[0]);
        control_.SetEdgeTop(styles[1]);
        control_.SetEdgeRight(styles[2]);
        control_.SetEdgeBottom(styles[3]);
        calls_.clear();
        control_.Refresh();
    }

    std::vector<std::pair<UINT, UINT>> StylesAndFlags() const {
        std::vector<std::pair<UINT, UINT>> result;
        for (const Call& call : calls_) {
            result.emplace_back(call.edges, call.flags);
        }
        return result;
    }

    // What the control shows now.
    Pixels Shown(const DrawEdge& control) const {
        ::UpdateWindow(control.hwnd());
        return PixelsOf(control.hdc());
    }

    TestForm form_;
    std::vector<Call> calls_;
    DrawEdge control_{DrawEdge::Mode::kRunTime, Recorder()};
};

TEST_F(DrawEdgeTest, ANewControlHasItsDefaults) {
    EXPECT_EQ(control_.BackColor(), 0x8000000FU);
    EXPECT_EQ(control_.Flags(), 0);
    EXPECT_EQ(control_.EdgeLeft(), 1);
    EXPECT_EQ(control_.EdgeTop(), 1);
    EXPECT_EQ(control_.EdgeRight(), 1);
    EXPECT_EQ(control_.EdgeBottom(), 1);
    EXPECT_EQ(control_.Edge(), 1);
    EXPECT_EQ(control_.MousePointer(), 0);
    EXPECT_EQ(control_.MouseIcon(), nullptr);
}

TEST_F(DrawEdgeTest, ItHasOneWindowAtATime) {
    const HWND window = control_.hwnd();
    EXPECT_THROW(control_.Create(form_, {}), ProgramError);
    EXPECT_EQ(control_.hwnd(), window);
}

TEST_F(DrawEdgeTest, FourSunkenSidesAreExactlyOneCall) {
    SetStyles({EDGE_SUNKEN, EDGE_SUNKEN, EDGE_SUNKEN, EDGE_SUNKEN});
    EXPECT_THAT(StylesAndFlags(), ElementsAre(std::pair<UINT, UINT>{10, 15}));
    EXPECT_EQ(calls_[0].rect.left, 0);
    EXPECT_EQ(calls_[0].rect.top, 0);
    EXPECT_EQ(calls_[0].rect.right, kWidth);
    EXPECT_EQ(calls_[0].rect.bottom, kHeight);
}

TEST_F(DrawEdgeTest, OppositePairsAreTwoCalls) {
    SetStyles({1, 2, 1, 2});
    EXPECT_THAT(StylesAndFlags(),
                ElementsAre(std::pair<UINT, UINT>{1, 1 | 4}, std::pair<UINT, UINT>{2, 2 | 8}));
}

TEST_F(DrawEdgeTest, FlagsGoWithEveryCall) {
    SetStyles({1, 2, 4, 8});
    calls_.clear();
    control_.SetFlags(BF_SOFT | BF_MONO);
    EXPECT_THAT(StylesAndFlags(),
                ElementsAre(std::pair<UINT, UINT>{1, 0x9001}, std::pair<UINT, UINT>{2, 0x9002},
                            std::pair<UINT, UINT>{4, 0x9004}, std::pair<UINT, UINT>{8, 0x9008}));
}

TEST_F(DrawEdgeTest, AdjustingFlagsDrawLaterEdgesInsideEarlierOnes) {
    SetStyles({EDGE_RAISED, EDGE_SUNKEN, EDGE_RAISED, EDGE_SUNKEN});
    calls_.clear();
    control_.SetFlags(BF_ADJUST);
    ASSERT_EQ(calls_.size(), 2U);
    EXPECT_EQ(calls_[1].rect.left, 2);
    EXPECT_EQ(calls_[1].rect.right, kWidth - 2);
    EXPECT_EQ(calls_[1].rect.top, 0);
    EXPECT_EQ(calls_[1].rect.bottom, kHeight);
}

TEST_F(DrawEdgeTest, ThePictureIsTheSystemsForEveryGroupingOfSides) {
    // Each way to share styles among four sides, by the style's number.
    const std::array<std::array<int, 4>, 15> groupings{{{0, 0, 0, 0},
                                                        {0, 0, 0, 1},
                                                        {0, 0, 1, 0},
                                                        {0, 1, 0, 0},
                                                        {0, 1, 1, 1},
                                                        {0, 0, 1, 1},
                                                        {0, 1, 0, 1},
                                                        {0, 1, 1, 0},
                                                        {0, 0, 1, 2},
                                                        {0, 1, 0, 2},
                                                        {0, 1, 2, 0},
                                                        {0, 1, 1, 2},
                                                        {0, 1, 2, 1},
                                                        {0, 1, 2, 2},
                                                        {0, 1, 2, 3}}};
    const std::array<std::int32_t, 4> styles{EDGE_RAISED, EDGE_SUNKEN, EDGE_ETCHED, EDGE_BUMP};
    const std::array<UINT, 4> bits{BF_LEFT, BF_TOP, BF_RIGHT, BF_BOTTOM};
    for (const std::int32_t flags : {0, BF_SOFT, BF_FLAT, BF_MONO, BF_ADJUST, BF_MIDDLE}) {
        control_.SetFlags(flags);
        for (const auto& grouping : groupings) {
            SetStyles({styles[static_cast<std::size_t>(grouping[0])],
                       styles[static_cast<std::size_t>(grouping[1])],
                       styles[static_cast<std::size_t>(grouping[2])],
                       styles[static_cast<std::size_t>(grouping[3])]});
            // Drawn by hand, one call for each style as far as there are sides that have it.
            const Picture expected(::GetSysColor(COLOR_3DFACE));
            RECT rect{0, 0, kWidth, kHeight};
            std::size_t groups = 0;
            for (int style = 0; style < 4; ++style) {
                UINT sides = 0;
                for (std::size_t side = 0; side < 4; ++side) {
                    sides |= grouping[side] == style ? bits[side] : 0U;
                }
                if (sides != 0) {
                    ::DrawEdge(expected.Dc(), &rect,
                               static_cast<UINT>(styles[static_cast<std::size_t>(style)]),
                               static_cast<UINT>(flags) | sides);
                    ++groups;
                }
            }
            EXPECT_EQ(calls_.size(), groups);
            ASSERT_EQ(Shown(control_), PixelsOf(expected.Dc()))
                << "flags " << flags << ", sides " << ::testing::PrintToString(grouping);
        }
    }
}

TEST_F(DrawEdgeTest, TheBackgroundMayBeAPlainOrASystemColour) {
    for (const DrawEdge::Colour colour : {0x00112233U, 0x80000000U | COLOR_HIGHLIGHT}) {
        control_.SetBackColor(colour);
        control_.Refresh();
        const COLORREF expected_colour =
            colour == 0x00112233U ? 0x00112233U : ::GetSysColor(COLOR_HIGHLIGHT);
        const Picture expected(expected_colour);
        RECT rect{0, 0, kWidth, kHeight};
        ::DrawEdge(expected.Dc(), &rect, BDR_RAISEDOUTER, BF_RECT);
        EXPECT_EQ(Shown(control_), PixelsOf(expected.Dc()));
    }
}

TEST_F(DrawEdgeTest, ANewBackgroundShowsAtTheNextRefreshOrResizeOnly) {
    const Pixels before = Shown(control_);
    control_.SetBackColor(0x000000FF);
    EXPECT_THAT(calls_, IsEmpty());
    control_.Invalidate();
    EXPECT_EQ(Shown(control_), before);
    control_.Refresh();
    EXPECT_NE(Shown(control_), before);

    control_.SetBackColor(0x0000FF00);
    control_.Move({10, 10, kWidth + 5, kHeight + 5});
    ::UpdateWindow(control_.hwnd());
    EXPECT_EQ(::GetPixel(control_.hdc(), 5, 5), 0x0000FF00U);
}

TEST_F(DrawEdgeTest, PaintingDrawsNoEdges) {
    control_.Refresh();
    calls_.clear();
    for (int i = 0; i < 5; ++i) {
        control_.Invalidate();
        ::UpdateWindow(control_.hwnd());
    }
    EXPECT_THAT(calls_, IsEmpty());
}

TEST_F(DrawEdgeTest, ASizeOfNothingIsHarmless) {
    control_.Move({0, 0, 0, 0});
    control_.Refresh();
    EXPECT_THAT(calls_, IsEmpty());
    control_.Move({0, 0, kWidth, kHeight});
    EXPECT_EQ(calls_.size(), 1U);
}

TEST_F(DrawEdgeTest, EdgeStandsForAllFourSides) {
    control_.SetEdge(5);
    EXPECT_EQ(control_.Edge(), 5);
    EXPECT_EQ(control_.EdgeLeft(), 5);
    EXPECT_EQ(control_.EdgeTop(), 5);
    EXPECT_EQ(control_.EdgeRight(), 5);
    EXPECT_EQ(control_.EdgeBottom(), 5);
    for (const auto set : {&DrawEdge::SetEdgeLeft, &DrawEdge::SetEdgeTop, &DrawEdge::SetEdgeRight,
                           &DrawEdge::SetEdgeBottom}) {
        control_.SetEdge(5);
        (control_.*set)(6);
        EXPECT_EQ(control_.Edge(), -1);
    }
}

TEST_F(DrawEdgeTest, EveryWriteMarksItsPropertyAsChanged) {
    std::vector<std::string> changed;
    control_.PropertyChanged = [&](std::string_view name) { changed.emplace_back(name); };
    control_.SetFlags(1);
    control_.SetEdgeLeft(2);
    control_.SetEdgeTop(2);
    control_.SetEdgeRight(2);
    control_.SetEdgeBottom(2);
    control_.SetBackColor(3);
    control_.SetMousePointer(1);
    control_.SetMouseIcon(nullptr);
    EXPECT_THAT(changed, ElementsAre("Flags", "EdgeLeft", "EdgeTop", "EdgeRight", "EdgeBottom",
                                     "BackColor", "MousePointer", "MouseIcon"));
    changed.clear();
    control_.SetEdge(4);
    EXPECT_THAT(changed, UnorderedElementsAre("EdgeLeft", "EdgeTop", "EdgeRight", "EdgeBottom"));
}

// Memory for a control that notices when it is touched after the control's end.
class GuardedMemory {
  public:
    GuardedMemory() : handler_(::AddVectoredExceptionHandler(/*First=*/1, OnFault)) {
        memory_ =
            ::VirtualAlloc(nullptr, sizeof(DrawEdge), MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
        touched_ = false;
    }
    GuardedMemory(const GuardedMemory&) = delete;
    GuardedMemory& operator=(const GuardedMemory&) = delete;
    ~GuardedMemory() {
        ::RemoveVectoredExceptionHandler(handler_);
        ::VirtualFree(memory_, 0, MEM_RELEASE);
    }
    [[nodiscard]] static void* Get() { return memory_; }
    [[nodiscard]] static bool Touched() { return touched_; }
    static void Close() { Protect(PAGE_NOACCESS); }

  private:
    static void Protect(DWORD protection) {
        DWORD before = 0;
        ::VirtualProtect(memory_, sizeof(DrawEdge), protection, &before);
    }
    // Lets whoever touches it go on.
    static LONG CALLBACK OnFault(EXCEPTION_POINTERS* fault) {
        if (fault->ExceptionRecord->ExceptionCode != EXCEPTION_ACCESS_VIOLATION) {
            return EXCEPTION_CONTINUE_SEARCH;
        }
        touched_ = true;
        Protect(PAGE_READWRITE);
        return EXCEPTION_CONTINUE_EXECUTION;
    }

    inline static void* memory_ = nullptr;
    inline static bool touched_ = false;
    void* handler_;
};

TEST_F(DrawEdgeTest, AHandlerOfPropertyChangedMayDestroyTheControl) {
    for (const auto set : {&DrawEdge::SetEdge, &DrawEdge::SetFlags, &DrawEdge::SetEdgeLeft,
                           &DrawEdge::SetMousePointer}) {
        const GuardedMemory memory;
        auto* const control = new (GuardedMemory::Get()) DrawEdge;
        Create(*control);
        control->PropertyChanged = [control](std::string_view) {
            control->~DrawEdge();
            GuardedMemory::Close();
        };
        (control->*set)(6);
        EXPECT_FALSE(GuardedMemory::Touched());
    }
}

TEST_F(DrawEdgeTest, ItDrawsEdgesOnAnyContextAndReturnsTheSystemsResult) {
    const Picture expected(0x00FFFFFF);
    RECT rect{3, 4, 30, 20};
    ::DrawEdge(expected.Dc(), &rect, EDGE_ETCHED, BF_TOPLEFT);
    const Picture drawn(0x00FFFFFF);
    EXPECT_TRUE(control_.DrawEdges(drawn.Dc(), 3, 4, 30, 20, EDGE_ETCHED, BF_TOPLEFT));
    EXPECT_EQ(PixelsOf(drawn.Dc()), PixelsOf(expected.Dc()));

    const DrawEdge failing(DrawEdge::Mode::kRunTime, [](HDC, RECT&, UINT, UINT) { return false; });
    EXPECT_FALSE(failing.DrawEdges(drawn.Dc(), 0, 0, 1, 1, 1, 1));
}

TEST_F(DrawEdgeTest, AtRunTimeThePointerReachesTheWindowBeneath) {
    EXPECT_EQ(control_.Send(WM_NCHITTEST, 0, MAKELPARAM(0, 0)), HTTRANSPARENT);
    PumpPending();
    POINT point{20, 20};
    ::ClientToScreen(form_.Handle(), &point);
    EXPECT_EQ(::WindowFromPoint(point), form_.Handle());
}

TEST_F(DrawEdgeTest, WhileAWindowIsDesignedThePointerHitsIt) {
    control_.Destroy();
    DrawEdge designed(DrawEdge::Mode::kDesign);
    Create(designed);
    EXPECT_EQ(designed.Send(WM_NCHITTEST, 0, MAKELPARAM(0, 0)), HTCLIENT);
    PumpPending();
    POINT point{20, 20};
    ::ClientToScreen(form_.Handle(), &point);
    EXPECT_EQ(::WindowFromPoint(point), designed.hwnd());
}

TEST_F(DrawEdgeTest, ThePointerPropertiesChooseThePointer) {
    control_.Destroy();
    DrawEdge designed(DrawEdge::Mode::kDesign);
    Create(designed);
    const auto pointer_over = [&] {
        designed.Send(WM_SETCURSOR, reinterpret_cast<WPARAM>(designed.hwnd()),
                      MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
        return ::GetCursor();
    };
    const HCURSOR arrow = ::LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));
    EXPECT_EQ(pointer_over(), arrow);
    designed.SetMousePointer(11);
    EXPECT_EQ(pointer_over(), ::LoadCursorW(nullptr, MAKEINTRESOURCEW(32514)));
    designed.SetMousePointer(99);
    EXPECT_EQ(pointer_over(), arrow) << "no custom pointer is set";
    const SharedCursor own(::CopyIcon(::LoadCursorW(nullptr, MAKEINTRESOURCEW(32515))),
                           [](HCURSOR cursor) { ::DestroyCursor(cursor); });
    designed.SetMouseIcon(own);
    EXPECT_EQ(pointer_over(), own.get());
    designed.SetMousePointer(1234);
    EXPECT_EQ(pointer_over(), arrow);
    ::SetCursor(arrow);
}

TEST_F(DrawEdgeTest, PropertiesSurviveTheirBag) {
    MemoryPropertyBag bag;
    const SharedCursor own(::CopyIcon(::LoadCursorW(nullptr, MAKEINTRESOURCEW(32515))),
                           [](HCURSOR cursor) { ::DestroyCursor(cursor); });
    control_.SetFlags(BF_SOFT);
    control_.SetEdgeLeft(2);
    control_.SetEdgeTop(4);
    control_.SetEdgeRight(8);
    control_.SetEdgeBottom(10);
    control_.SetBackColor(0x00123456);
    control_.SetMousePointer(99);
    control_.SetMouseIcon(own);
    control_.WriteProperties(bag);

    DrawEdge other;
    other.ReadProperties(bag);
    EXPECT_EQ(other.Flags(), BF_SOFT);
    EXPECT_EQ(other.EdgeLeft(), 2);
    EXPECT_EQ(other.EdgeTop(), 4);
    EXPECT_EQ(other.EdgeRight(), 8);
    EXPECT_EQ(other.EdgeBottom(), 10);
    EXPECT_EQ(other.BackColor(), 0x00123456U);
    EXPECT_EQ(other.MousePointer(), 99);
    EXPECT_EQ(other.MouseIcon(), own);
}

TEST_F(DrawEdgeTest, SavingKeepsFlagsAndEdgesAlwaysAndDefaultsOtherwiseNot) {
    MemoryPropertyBag bag;
    control_.WriteProperties(bag);
    std::vector<std::string> names;
    for (const auto& [name, value] : bag.Values()) {
        names.push_back(name);
    }
    EXPECT_THAT(names,
                UnorderedElementsAre("Flags", "EdgeLeft", "EdgeTop", "EdgeRight", "EdgeBottom"));
    control_.SetMousePointer(7);
    control_.WriteProperties(bag);
    EXPECT_EQ(bag.Values().find("MousePointer")->second, PropertyValue(std::int16_t{7}));
}

TEST_F(DrawEdgeTest, SavingAlsoNamesTheCoordinateModeWithItsDefault) {
    // Sees the calls themselves: a value at its default is not kept.
    class Recording final : public PropertyBag {
      public:
        PropertyValue ReadProperty(std::string_view, const PropertyValue& fallback) const override {
            return fallback;
        }
        void WriteProperty(std::string_view name, const PropertyValue&) override {
            always.emplace_back(name);
        }
        void WriteProperty(std::string_view name, const PropertyValue& value,
                           const PropertyValue& default_value) override {
            with_default.emplace(name, std::pair(value, default_value));
        }
        std::vector<std::string> always;
        std::map<std::string, std::pair<PropertyValue, PropertyValue>> with_default;
    } bag;
    control_.WriteProperties(bag);
    EXPECT_THAT(bag.always, ElementsAre("Flags", "EdgeLeft", "EdgeTop", "EdgeRight", "EdgeBottom"));
    EXPECT_EQ(bag.with_default["ScaleMode"],
              std::pair(PropertyValue(std::int16_t{3}), PropertyValue(std::int16_t{3})));
    EXPECT_EQ(bag.with_default["BackColor"].second,
              PropertyValue(static_cast<std::int32_t>(0x8000000FU)));
}

TEST_F(DrawEdgeTest, WhatABagDoesNotHoldIsAtItsDefault) {
    control_.SetEdge(9);
    control_.SetFlags(7);
    control_.SetBackColor(1);
    control_.SetMousePointer(3);
    calls_.clear();
    control_.ReadProperties(MemoryPropertyBag());
    EXPECT_EQ(control_.Edge(), 1);
    EXPECT_EQ(control_.Flags(), 0);
    EXPECT_EQ(control_.BackColor(), 0x8000000FU);
    EXPECT_EQ(control_.MousePointer(), 0);
    EXPECT_EQ(calls_.size(), 1U) << "the control is drawn anew";
}

TEST_F(DrawEdgeTest, DrawingLeavesNoObjectsBehind) {
    control_.Refresh();
    const DWORD before = ::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS);
    for (int i = 0; i < 200; ++i) {
        control_.Refresh();
        ::UpdateWindow(control_.hwnd());
    }
    const DWORD after = ::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS);
    if (before == 0) {
        GTEST_SKIP() << "this system does not count drawing objects";
    }
    EXPECT_LE(after, before + 2);
}

}  // namespace
}  // namespace tidemark
