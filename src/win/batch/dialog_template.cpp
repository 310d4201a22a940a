#include "dialog_template.h"

namespace {

constexpr DWORD kFrameStyle =
    DS_SETFONT | DS_MODALFRAME | DS_CENTER | WS_POPUP | WS_CAPTION | WS_SYSMENU;
constexpr WORD kFontPoints = 8;
constexpr std::wstring_view kFontName = L"MS Shell Dlg";
// Where the frame's control count lies, in words: after its style and extended style.
constexpr std::size_t kCountAt = 4;

}  // namespace

DialogTemplate::DialogTemplate(std::wstring_view title, short width, short height) {
    AddDword(kFrameStyle);
    AddDword(0);
    words_.push_back(0);  // the number of controls, counted by Add
    for (const short value : {short{0}, short{0}, width, height})
        words_.push_back(static_cast<WORD>(value));
    words_.push_back(0);  // no menu
    words_.push_back(0);  // the system's dialog class
    AddText(title);
    words_.push_back(kFontPoints);
    AddText(kFontName);
}

void DialogTemplate::Add(const DialogControl& control) {
    AlignToDword();
    AddDword(control.style | WS_CHILD | WS_VISIBLE);
    AddDword(0);
    for (const short value : {control.x, control.y, control.width, control.height})
        words_.push_back(static_cast<WORD>(value));
    words_.push_back(static_cast<WORD>(control.id));
    AddText(control.className);
    AddText(control.text);
    words_.push_back(0);  // no creation data
    ++words_[kCountAt];
}

void DialogTemplate::AlignToDword() {
    if (words_.size() % 2 != 0)
        words_.push_back(0);
}

void DialogTemplate::AddText(std::wstring_view text) {
    words_.insert(words_.end(), text.begin(), text.end());
    words_.push_back(0);
}

void DialogTemplate::AddDword(DWORD value) {
    words_.push_back(LOWORD(value));
    words_.push_back(HIWORD(value));
}
