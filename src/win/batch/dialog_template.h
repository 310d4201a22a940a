// A dialog's layout held in memory, in the form the system's dialog functions read: the frame
// with its title and font, then each control with its class, text, identifier and place, all in
// dialog units.
#pragma once

#include <windows.h>

#include <string_view>
#include <vector>

struct DialogControl {
    std::wstring_view className;  // a system class such as L"BUTTON" or L"SysListView32"
    std::wstring_view text;
    int id = 0;
    DWORD style = 0;  // WS_CHILD | WS_VISIBLE are always added
    short x = 0, y = 0, width = 0, height = 0;
};

class DialogTemplate {
  public:
    DialogTemplate(std::wstring_view title, short width, short height);

    void Add(const DialogControl& control);

    const DLGTEMPLATE* Get() const { return reinterpret_cast<const DLGTEMPLATE*>(words_.data()); }

  private:
    void AlignToDword();
    void AddText(std::wstring_view text);
    void AddDword(DWORD value);

    std::vector<WORD> words_;
};
