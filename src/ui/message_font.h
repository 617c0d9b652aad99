#pragma once

#include <string>
#include <vector>

#include "ui/gdi.h"
#include "ui/window.h"

namespace tidemark {

// Face name of the font that the system shows messages in. Throws ProgramError with the system's
// code when the system does not tell.
[[nodiscard]] std::string MessageFontName();

// A font by face name and size in points, for the 96 pixels an inch that the layout is made for.
// Throws ProgramError when it cannot be made.
[[nodiscard]] UniqueFont MakeFont(const std::string& face, double points);

// Gives the controls of a window the message font and owns the fonts made for that: it lives as
// long as the window does.
class MessageFont {
  public:
    // Changes the face of every control of the window, also of those in its panels, in the window's
    // control order. Sizes, weights and styles stay as they are; what has no font is left alone,
    // and nothing that goes wrong is reported.
    void Adopt(const Window& window);

  private:
    void AdoptInto(HWND container, const std::wstring& face);
    void AdoptControl(HWND control, const std::wstring& face);

    struct MadeFont {
        LOGFONTW description;
        UniqueFont font;
    };
    std::vector<MadeFont> fonts_;  // one for each size and style
};

}  // namespace tidemark
