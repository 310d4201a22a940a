// A list box filled with lines and scrolled sideways as far as its widest line needs.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

// Adds the lines in order and sets the horizontal extent to the widest line's width in pixels.
void FillListBox(HWND list, const std::vector<std::wstring>& lines);
