#include "list_view_rows.h"

void AddListColumn(HWND list, int column, const std::wstring& title, int width) {
    LVCOLUMNW header{};
    header.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
    header.pszText = const_cast<wchar_t*>(title.c_str());
    header.cx = width;
    header.iSubItem = column;
    SendMessageW(list, LVM_INSERTCOLUMNW, column, reinterpret_cast<LPARAM>(&header));
}

int InsertListRow(HWND list, int row, const std::wstring& text, int image) {
    LVITEMW item{};
    item.mask = LVIF_TEXT | (image >= 0 ? LVIF_IMAGE : 0);
    item.iItem = row;
    item.pszText = const_cast<wchar_t*>(text.c_str());
    item.iImage = image;
    return static_cast<int>(
        SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)));
}

void SetListText(HWND list, int row, int column, const std::wstring& text, int image) {
    LVITEMW item{};
    item.mask = LVIF_TEXT | (image >= 0 ? LVIF_IMAGE : 0);
    item.iItem = row;
    item.iSubItem = column;
    item.pszText = const_cast<wchar_t*>(text.c_str());
    item.iImage = image;
    SendMessageW(list, LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

std::wstring ListText(HWND list, int row, int column) {
    // Paths are limited by the system, so a buffer of the longest one holds any text here.
    std::wstring text(32768, L'\0');
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    const auto length = SendMessageW(list, LVM_GETITEMTEXTW, row, reinterpret_cast<LPARAM>(&item));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

int ListRowCount(HWND list) {
    return static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
}

bool IsListRowSelected(HWND list, int row) {
    return SendMessageW(list, LVM_GETITEMSTATE, row, LVIS_SELECTED) != 0;
}

void SetListRowState(HWND list, int row, UINT mask, UINT state) {
    LVITEMW item{};
    item.stateMask = mask;
    item.state = state;
    SendMessageW(list, LVM_SETITEMSTATE, row, reinterpret_cast<LPARAM>(&item));
}

std::vector<int> SelectedListRows(HWND list) {
    std::vector<int> rows;
    for (int row = 0; row < ListRowCount(list); ++row) {
        if (IsListRowSelected(list, row))
            rows.push_back(row);
    }
    return rows;
}
