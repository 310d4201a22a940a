// The batch's Windows dialogs driven with messages: the file list's rows, checks, order, sort and
// states, its output options and overwrite list, the host's open documents, and the result.
#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <fstream>

#include "batch/batch_control_ids.h"
#include "batch/batch_files_dialog.h"
#include "batch/batch_result_dialog.h"
#include "batch/batch_wide_texts.h"
#include "batch/common_controls_context.h"
#include "batch/file_row_facts.h"
#include "batch/list_view_rows.h"
#include "batch/open_documents_dialog.h"
#include "batch/output_option_dialog.h"
#include "fake_batch_host.h"
#include "system_paths.h"
#include "window_test_support.h"

namespace batch_dialogs_test {
namespace {

std::wstring Text(HWND dialog, int id) {
    wchar_t text[512] = {};
    GetDlgItemTextW(dialog, id, text, 512);
    return text;
}

bool Enabled(HWND dialog, int id) {
    return IsWindowEnabled(GetDlgItem(dialog, id)) != FALSE;
}

void Notify(HWND dialog, NMHDR& header, int id, UINT code) {
    header.hwndFrom = GetDlgItem(dialog, id);
    header.idFrom = static_cast<UINT_PTR>(id);
    header.code = code;
    SendMessageW(dialog, WM_NOTIFY, header.idFrom, reinterpret_cast<LPARAM>(&header));
}

void ClickColumn(HWND dialog, int column) {
    NMLISTVIEW click{};
    click.iItem = -1;
    click.iSubItem = column;
    Notify(dialog, click.hdr, kFileListView, LVN_COLUMNCLICK);
}

std::vector<std::wstring> Names(HWND list) {
    std::vector<std::wstring> names;
    for (int row = 0; row < ListRowCount(list); ++row)
        names.push_back(ListText(list, row, kNameColumn));
    return names;
}

std::vector<std::wstring> ListBoxLines(HWND list) {
    std::vector<std::wstring> lines;
    const auto count = SendMessageW(list, LB_GETCOUNT, 0, 0);
    for (WPARAM i = 0; i < static_cast<WPARAM>(count); ++i) {
        std::wstring line(static_cast<std::size_t>(SendMessageW(list, LB_GETTEXTLEN, i, 0)), L'\0');
        SendMessageW(list, LB_GETTEXT, i, reinterpret_cast<LPARAM>(line.data()));
        lines.push_back(line);
    }
    return lines;
}

// Files a.pdf (2 pages, the biggest), b.pdf (3 pages), xfa.pdf and broken.pdf in a folder of
// their own, with a sub-folder that a folder's walk leaves out.
class BatchDialogsTest : public testing::Test {
  protected:
    BatchDialogsTest() {
        const std::wstring made =
            SystemTempFolder() + L"batch-dialogs-" + std::to_wstring(GetCurrentProcessId());
        std::filesystem::create_directories(std::filesystem::path(made) / L"sub");
        folder = FullLongPath(made);
        for (const wchar_t* name : {L"b.pdf", L"a.pdf", L"xfa.pdf", L"broken.pdf"}) {
            std::ofstream(std::filesystem::path(Path(name)), std::ios::binary)
                << std::string(std::wstring(name) == L"a.pdf" ? 3000 : 10, 'x');
        }
        for (const wchar_t* name : {L"a.pdf", L"b.pdf", L"xfa.pdf"}) {
            FakeDoc doc = FileDoc(Path(name));
            doc.pages.resize(std::wstring(name) == L"b.pdf" ? 3 : 2);
            doc.xfa = std::wstring(name) == L"xfa.pdf";
            host.files.emplace(doc.path, doc);
        }
    }
    ~BatchDialogsTest() override {
        std::error_code ignored;
        std::filesystem::remove_all(std::filesystem::path(folder), ignored);
    }

    std::wstring Path(const std::wstring& name) const { return folder + L"\\" + name; }

    std::wstring folder;
    FakeBatchHost host;
};

TEST_F(BatchDialogsTest, FileListChecksRowsSortsThemAndReadsTheAcceptedOnes) {
    BatchFilesDialog dialog(host);
    const HWND window = dialog.Create(nullptr);
    const HWND list = GetDlgItem(window, kFileListView);
    EXPECT_FALSE(Enabled(window, IDOK));
    dialog.AddPaths({folder, Path(L"a.pdf"), Path(L"missing.pdf")});

    const struct {
        const wchar_t* name;
        std::optional<int> pages;
        std::string_view errorKey;
    } rows[] = {{L"a.pdf", 2, ""},
                {L"b.pdf", 3, ""},
                {L"broken.pdf", std::nullopt, "IDS_STR_PARSEERROR"},
                {L"xfa.pdf", std::nullopt, "IDS_STR_XFAERRORDES"}};
    ASSERT_EQ(ListRowCount(list), 4);
    ASSERT_EQ(dialog.Rows().size(), 4u);
    const auto header = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
    EXPECT_EQ(SendMessageW(header, HDM_GETITEMCOUNT, 0, 0), 5);
    for (int i = 0; i < 4; ++i) {
        SCOPED_TRACE(i);
        const BatchFileRow& row = dialog.Rows()[static_cast<std::size_t>(i)];
        EXPECT_EQ(ListText(list, i, kNameColumn), rows[i].name);
        EXPECT_EQ(ListText(list, i, kFolderColumn), folder);
        EXPECT_EQ(row.path, Path(rows[i].name));
        EXPECT_EQ(row.pageCount, rows[i].pages);
        EXPECT_EQ(row.errorKey, rows[i].errorKey);
        EXPECT_EQ(ListText(list, i, kErrorColumn),
                  rows[i].pages ? L"" : BatchWideText(rows[i].errorKey));
        EXPECT_FALSE(ListText(list, i, kDateColumn).empty());
    }
    EXPECT_EQ(Text(window, kTotalFilesLabel), L"Files: 4");
    EXPECT_TRUE(Enabled(window, IDOK));
    EXPECT_EQ(host.liveHidden, 0);

    // The size column: the biggest file last; a second click reverses the order.
    ClickColumn(window, kSizeColumn);
    EXPECT_EQ(ListText(list, 3, kNameColumn), L"a.pdf");
    ClickColumn(window, kSizeColumn);
    EXPECT_EQ(ListText(list, 0, kNameColumn), L"a.pdf");
    ClickColumn(window, kNameColumn);
    EXPECT_EQ(Names(list),
              (std::vector<std::wstring>{L"a.pdf", L"b.pdf", L"broken.pdf", L"xfa.pdf"}));

    // Results named "_redacted" beside their sources overwrite nothing: OK reads the rows.
    ClickButton(window, IDOK);
    EXPECT_TRUE(dialog.Ended());
    EXPECT_EQ(dialog.Result(), IDOK);
    const BatchChoice choice = dialog.Choice();
    ASSERT_EQ(choice.files.size(), 2u);
    EXPECT_EQ(choice.files[0].path, Path(L"a.pdf"));
    EXPECT_EQ(choice.files[0].fileSize, 3000);
    EXPECT_EQ(choice.totalPages, 5);
}

TEST_F(BatchDialogsTest, RowsMoveAndGoAsTheButtonsSayAndDropsAddEachFileOnce) {
    BatchFilesDialog dialog(host);
    const HWND window = dialog.Create(nullptr);
    const HWND list = GetDlgItem(window, kFileListView);
    SendMessageW(
        window, WM_DROPFILES,
        reinterpret_cast<WPARAM>(FileDropOf({Path(L"a.pdf"), Path(L"b.pdf"), Path(L"a.pdf")})), 0);
    SendMessageW(window, WM_DROPFILES, reinterpret_cast<WPARAM>(FileDropOf({Path(L"xfa.pdf")})), 0);
    ASSERT_EQ(Names(list), (std::vector<std::wstring>{L"a.pdf", L"b.pdf", L"xfa.pdf"}));

    const struct {
        int select;  // the row selected and focused first; -1 keeps the selection
        int button;  // a button, or VK_DELETE pressed in the list
        std::vector<std::wstring> names;
        bool buttonsEnabled;
    } steps[] = {
        {-1, kMoveUpButton, {L"a.pdf", L"b.pdf", L"xfa.pdf"}, false},
        {1, kMoveUpButton, {L"b.pdf", L"a.pdf", L"xfa.pdf"}, true},
        {-1, kMoveUpButton, {L"b.pdf", L"a.pdf", L"xfa.pdf"}, true},  // already first
        {-1, kMoveDownButton, {L"a.pdf", L"b.pdf", L"xfa.pdf"}, true},
        {2, kMoveDownButton, {L"a.pdf", L"b.pdf", L"xfa.pdf"}, true},  // already last
        {-1, kRemoveButton, {L"a.pdf", L"b.pdf"}, false},
        {0, VK_DELETE, {L"b.pdf"}, false},
    };
    for (const auto& step : steps) {
        SCOPED_TRACE(step.names.size());
        if (step.select >= 0) {
            SetListRowState(list, -1, LVIS_SELECTED | LVIS_FOCUSED, 0);
            SetListRowState(list, step.select, LVIS_SELECTED | LVIS_FOCUSED,
                            LVIS_SELECTED | LVIS_FOCUSED);
        }
        if (step.button == VK_DELETE) {
            NMLVKEYDOWN key{};
            key.wVKey = VK_DELETE;
            Notify(window, key.hdr, kFileListView, LVN_KEYDOWN);
        } else {
            SendMessageW(window, WM_COMMAND, MAKEWPARAM(step.button, BN_CLICKED), 0);
        }
        EXPECT_EQ(Names(list), step.names);
        for (const int button : {kRemoveButton, kMoveUpButton, kMoveDownButton})
            EXPECT_EQ(Enabled(window, button), step.buttonsEnabled) << button;
    }
    EXPECT_EQ(Text(window, kTotalFilesLabel), L"Files: 1");
    SendMessageW(window, WM_COMMAND, MAKEWPARAM(kRemoveButton, BN_CLICKED), 0);
    SetListRowState(list, 0, LVIS_SELECTED, LVIS_SELECTED);
    SendMessageW(window, WM_COMMAND, MAKEWPARAM(kRemoveButton, BN_CLICKED), 0);
    EXPECT_EQ(ListRowCount(list), 0);
    EXPECT_FALSE(Enabled(window, IDOK));
}

TEST_F(BatchDialogsTest, OptionsOfTheListAskBeforeOverwritingExistingTargets) {
    BatchFilesDialog dialog(host);
    const HWND window = dialog.Create(nullptr);
    dialog.AddPaths({Path(L"b.pdf"), Path(L"a.pdf")});
    {
        // Results keep their names in the sources' folder: both targets exist.
        const ModalAnswer options(L"Output Options", [&](HWND options) {
            ClickButton(options, kSpecificRadio);
            SetDlgItemTextW(options, kFolderEdit, folder.c_str());
            ClickButton(options, kKeepRadio);
            ClickButton(options, IDOK);
        });
        ClickButton(window, kOptionsButton);
        EXPECT_TRUE(options.Answered());
    }
    EXPECT_EQ(dialog.Options().folder, folder + L"/");
    EXPECT_TRUE(dialog.Options().keepName);

    for (const int answer : {IDCANCEL, IDOK}) {
        std::vector<std::wstring> listed;
        const ModalAnswer overwrite(L"Files Will Be Overwritten", [&](HWND overwrite) {
            listed = ListBoxLines(GetDlgItem(overwrite, kOverwriteFileList));
            EXPECT_GT(SendMessageW(GetDlgItem(overwrite, kOverwriteFileList),
                                   LB_GETHORIZONTALEXTENT, 0, 0),
                      0);
            ClickButton(overwrite, answer);
        });
        ClickButton(window, IDOK);
        EXPECT_EQ(listed, (std::vector<std::wstring>{folder + L"/a.pdf", folder + L"/b.pdf"}));
        EXPECT_EQ(dialog.Ended(), answer == IDOK);
    }
}

TEST_F(BatchDialogsTest, OptionsDialogChecksOkInOrderAndWritesTheRecordBack) {
    const struct {
        bool specific;
        const wchar_t* folder;
        bool keep;
        const wchar_t* before;
        const wchar_t* after;
        bool overwrite;
        const char* failedKey;  // empty: the dialog ends
    } cases[] = {
        {true, L"", true, L"", L"", false, "IDS_STRING_CHOSEFOLDER"},
        {false, L"", true, L"", L"", false, "IDS_STRING_OUTPUTTIP"},
        {false, L"", false, L"", L"", true, "IDS_STRING_FIXTIP"},
        {true, L"C:\\out", true, L"", L"", false, ""},
        {false, L"", false, L"pre_", L"", false, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.failedKey);
        FakeBatchHost fresh;
        OutputOptions start;
        start.prefix = L"old";
        OutputOptionDialog dialog(fresh, start);
        const HWND window = dialog.Create(nullptr);
        ClickButton(window, c.specific ? kSpecificRadio : kSameFolderRadio);
        ClickButton(window, c.keep ? kKeepRadio : kAddToNameRadio);
        SetDlgItemTextW(window, kFolderEdit, c.folder);
        SetDlgItemTextW(window, kBeforeEdit, c.before);
        SetDlgItemTextW(window, kAfterEdit, c.after);
        CheckDlgButton(window, kOverwriteCheck, c.overwrite ? BST_CHECKED : BST_UNCHECKED);
        // A chosen folder is needed for OK to be enabled; a command still runs its checks.
        EXPECT_EQ(Enabled(window, IDOK), !c.specific || *c.folder != L'\0');
        SendMessageW(window, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
        EXPECT_EQ(dialog.Ended(), *c.failedKey == '\0');
        if (*c.failedKey != '\0') {
            EXPECT_EQ(fresh.messages, std::vector<std::wstring>{BatchWideText(c.failedKey)});
            continue;
        }
        const OutputOptions& record = dialog.Record();
        EXPECT_EQ(record.specificFolder, c.specific);
        EXPECT_EQ(record.sameFolder, !c.specific);
        EXPECT_EQ(record.folder, c.specific ? std::wstring(c.folder) + L"/" : L"");
        EXPECT_EQ(record.keepName, c.keep);
        EXPECT_EQ(record.prefix, c.keep ? L"" : c.before);
        EXPECT_EQ(record.suffix, c.keep ? start.suffix : c.after);
    }
}

TEST_F(BatchDialogsTest, OptionsDialogFiltersNamesAndKeepsTheOverwriteBoxWhenItMust) {
    OutputOptions start;
    start.folder = L"C:\\out/";
    OutputOptionDialog dialog(host, start);
    const HWND window = dialog.Create(nullptr);
    // The record shows without the folder's last separator; the controls follow the radios.
    EXPECT_EQ(Text(window, kFolderEdit), L"C:\\out");
    EXPECT_EQ(Text(window, kAfterEdit), L"_redacted");
    EXPECT_FALSE(Enabled(window, kFolderEdit) || Enabled(window, kBrowseButton));
    EXPECT_TRUE(Enabled(window, kBeforeEdit) && Enabled(window, kAfterEdit));

    // Characters a file name can't hold are dropped as they are typed.
    for (const wchar_t c : std::wstring(L"re:d*/x"))
        SendMessageW(GetDlgItem(window, kBeforeEdit), WM_CHAR, c, 0);
    EXPECT_EQ(Text(window, kBeforeEdit), L"redx");

    ClickButton(window, kSpecificRadio);
    EXPECT_TRUE(Enabled(window, kFolderEdit) && Enabled(window, kBrowseButton));
    SetDlgItemTextW(window, kFolderEdit, L"");
    EXPECT_FALSE(Enabled(window, IDOK));
    SetDlgItemTextW(window, kFolderEdit, L"C:\\out");
    EXPECT_TRUE(Enabled(window, IDOK));

    // Results that can only fall on their sources keep the overwrite box checked.
    ClickButton(window, kSameFolderRadio);
    ClickButton(window, kKeepRadio);
    EXPECT_FALSE(Enabled(window, kBeforeEdit) || Enabled(window, kAfterEdit));
    ClickButton(window, kOverwriteCheck);
    EXPECT_EQ(IsDlgButtonChecked(window, kOverwriteCheck), BST_CHECKED);
    ClickButton(window, kOverwriteCheck);
    EXPECT_EQ(IsDlgButtonChecked(window, kOverwriteCheck), BST_CHECKED);
    ASSERT_EQ(host.messageBoxes.size(), 1u);
    EXPECT_EQ(host.messageBoxes[0], std::pair(BatchWideText("IDS_GW_MUSTOVERWRITING"), 0x30));

    ClickButton(window, IDOK);
    EXPECT_TRUE(dialog.Ended());
    EXPECT_TRUE(dialog.Record().keepName);
    EXPECT_TRUE(dialog.Record().overwrite);
    EXPECT_EQ(dialog.Record().prefix, L"");
}

TEST_F(BatchDialogsTest, OpenDocumentsThatNeedASaveAreSavedFirstAndAddedOnlyWhenItWorks) {
    const struct {
        bool saveWorks;
        std::vector<std::wstring> chosen;
    } cases[] = {{true, {L"a.pdf", L"b.pdf", L"xfa.pdf"}}, {false, {L"a.pdf"}}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.saveWorks);
        FakeBatchHost open;
        open.refuseSave = !c.saveWorks;
        open.Open(FileDoc(Path(L"a.pdf")));
        FakeDoc changed = FileDoc(Path(L"b.pdf"));
        changed.modified = true;
        const HostDoc modified = open.Open(changed);
        FakeDoc untitled = FileDoc(Path(L"xfa.pdf"));
        untitled.temporary = true;
        open.Open(untitled);

        OpenDocumentsDialog dialog(open);
        const HWND window = dialog.Create(nullptr);
        EXPECT_EQ(SelectedListRows(GetDlgItem(window, kOpenFilesList)).size(), 3u);
        ClickButton(window, IDOK);
        std::vector<std::wstring> chosen;
        for (const std::wstring& path : c.chosen)
            chosen.push_back(Path(path));
        EXPECT_EQ(dialog.ChosenPaths(), chosen);
        // One notice for all the documents to save, before any of them is saved.
        ASSERT_EQ(open.messageBoxes.size(), 1u);
        EXPECT_EQ(open.messageBoxes[0].first, BatchWideText("IDS_NEEDSAVE_MSG"));
        EXPECT_EQ(open.Doc(modified).modified, !c.saveWorks);
    }
}

TEST_F(BatchDialogsTest, TheModalListAddsOpenDocumentsAndGivesItsChoiceAtOk) {
    host.Open(FileDoc(Path(L"b.pdf")));
    for (const bool ok : {false, true}) {
        SCOPED_TRACE(ok);
        const ModalAnswer list(L"Batch Redaction", [&](HWND list) {
            const ModalAnswer open(L"Add Open Files", [](HWND open) { ClickButton(open, IDOK); });
            SendMessageW(list, WM_COMMAND, MAKEWPARAM(kAddOpenFilesCommand, 0), 0);
            EXPECT_TRUE(open.Answered());
            ClickButton(list, ok ? IDOK : IDCANCEL);
        });
        const std::optional<BatchChoice> choice = ChooseBatchFilesWithDialog(host, nullptr);
        EXPECT_TRUE(list.Answered());
        ASSERT_EQ(choice.has_value(), ok);
        if (ok) {
            ASSERT_EQ(choice->files.size(), 1u);
            EXPECT_EQ(choice->files[0].path, Path(L"b.pdf"));
            // Checked through the open document, of one page, not the file of three.
            EXPECT_EQ(choice->totalPages, 1);
        }
    }
}

TEST(BatchResultDialogTest, PictureListAndHeightFollowTheResult) {
    // The window's height, and how far below its top the OK button lies.
    const auto heights = [](HWND window) {
        RECT frame{}, ok{};
        GetWindowRect(window, &frame);
        GetWindowRect(GetDlgItem(window, IDOK), &ok);
        return std::pair(frame.bottom - frame.top, ok.top - frame.top);
    };
    const auto shows = [](HWND window, int id) {
        return (GetWindowLongW(GetDlgItem(window, id), GWL_STYLE) & WS_VISIBLE) != 0;
    };
    BatchResultDialog done({0, L"All done", {}});
    BatchResultDialog failed({200009, L"Some failed", {L"C:\\in\\x.pdf", L"C:\\in\\y.pdf"}});
    const HWND doneWindow = done.Create(nullptr);
    const HWND failedWindow = failed.Create(nullptr);
    for (const HWND window : {doneWindow, failedWindow}) {
        wchar_t title[64] = {};
        GetWindowTextW(window, title, 64);
        EXPECT_STREQ(title, L"Batch Redaction");
        EXPECT_FALSE(shows(window, kResultLink));
    }
    EXPECT_EQ(Text(doneWindow, kResultMessage), L"All done");
    const auto picture = [](HWND window) {
        return reinterpret_cast<HICON>(
            SendMessageW(GetDlgItem(window, kResultPicture), STM_GETICON, 0, 0));
    };
    EXPECT_EQ(picture(doneWindow), LoadIconW(nullptr, reinterpret_cast<LPCWSTR>(IDI_INFORMATION)));
    EXPECT_EQ(picture(failedWindow), LoadIconW(nullptr, reinterpret_cast<LPCWSTR>(IDI_WARNING)));
    EXPECT_FALSE(shows(doneWindow, kFailedList));
    EXPECT_TRUE(shows(failedWindow, kFailedList));
    EXPECT_EQ(ListBoxLines(GetDlgItem(failedWindow, kFailedList)),
              (std::vector<std::wstring>{L"C:\\in\\x.pdf", L"C:\\in\\y.pdf"}));
    EXPECT_GT(SendMessageW(GetDlgItem(failedWindow, kFailedList), LB_GETHORIZONTALEXTENT, 0, 0), 0);
    const auto [failedHeight, failedOk] = heights(failedWindow);
    const auto [doneHeight, doneOk] = heights(doneWindow);
    EXPECT_EQ(failedHeight - doneHeight, 100);
    EXPECT_EQ(failedOk - doneOk, 100);
    ClickButton(doneWindow, IDOK);
    EXPECT_EQ(done.Result(), IDOK);
}

TEST(BatchResultDialogTest, TheLinkOpensItsTargetAndEndsTheDialog) {
    std::vector<std::wstring> opened;
    BatchResultDialog dialog({0, L"All done", {}}, [&](const std::wstring& target) {
        opened.push_back(target);
        return true;
    });
    dialog.SetLink(L"Show the results", L"C:\\out");
    const HWND window = dialog.Create(nullptr);
    EXPECT_EQ(Text(window, kResultLink), L"Show the results");
    EXPECT_NE(GetWindowLongW(GetDlgItem(window, kResultLink), GWL_STYLE) & WS_VISIBLE, 0);
    SendMessageW(window, WM_COMMAND, MAKEWPARAM(kResultLink, STN_CLICKED),
                 reinterpret_cast<LPARAM>(GetDlgItem(window, kResultLink)));
    EXPECT_EQ(opened, std::vector<std::wstring>{L"C:\\out"});
    EXPECT_TRUE(dialog.Ended());
}

TEST(CommonControlsContextTest, TheModulesManifestIsActiveForTheOwnersLifetime) {
    const auto current = [] {
        HANDLE context = nullptr;
        GetCurrentActCtx(&context);
        if (context != nullptr)
            ReleaseActCtx(context);
        return context;
    };
    const HANDLE before = current();
    {
        const CommonControlsContext controls;
        EXPECT_NE(current(), nullptr);
        EXPECT_NE(current(), before);
    }
    EXPECT_EQ(current(), before);
}

}  // namespace
}  // namespace batch_dialogs_test
