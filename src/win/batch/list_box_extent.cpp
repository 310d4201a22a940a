#include "list_box_extent.h"

#include <algorithm>

namespace {

// Room beyond the text, so that its last character is not cut by the frame.
constexpr int kExtentMargin = 8;

}  // namespace

void FillListBox(HWND list, const std::vector<std::wstring>& lines) {
    const HDC context = GetDC(list);
    const auto font = reinterpret_cast<HFONT>(SendMessageW(list, WM_GETFONT, 0, 0));
    const HGDIOBJ previous = SelectObject(context, font);
    LONG widest = 0;
    for (const std::wstring& line : lines) {
        SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line.c_str()));
        SIZE size{};
        GetTextExtentPoint32W(context, line.c_str(), static_cast<int>(line.size()), &size);
        widest = std::max(widest, size.cx);
    }
    SelectObject(context, previous);
    ReleaseDC(list, context);
    SendMessageW(list, LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(widest + kExtentMargin), 0);
}
