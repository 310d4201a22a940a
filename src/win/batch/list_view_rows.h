// Small helpers over a report-style list-view: columns, a row's texts, its selection.
#pragma once

#include <windows.h>
// after windows.h, which it needs
#include <commctrl.h>

#include <string>
#include <vector>

void AddListColumn(HWND list, int column, const std::wstring& title, int width);
// Inserts a row at `row` with the text of its first column; the row's index.
int InsertListRow(HWND list, int row, const std::wstring& text, int image = -1);
void SetListText(HWND list, int row, int column, const std::wstring& text, int image = -1);
std::wstring ListText(HWND list, int row, int column);
int ListRowCount(HWND list);
bool IsListRowSelected(HWND list, int row);
void SetListRowState(HWND list, int row, UINT mask, UINT state);
std::vector<int> SelectedListRows(HWND list);
