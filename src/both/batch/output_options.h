// OutputOptions: where a batch puts its results and how it names them, and the rules of the
// options dialog over its controls (the checks of OK, the OK button's state, the write-back).
#pragma once

#include <string>
#include <string_view>

struct OutputOptions {
    bool sameFolder = true;
    bool specificFolder = false;
    std::wstring folder;  // with one "/" appended at write-back; empty with sameFolder
    bool keepName = false;
    bool addToName = true;
    std::wstring prefix;
    std::wstring suffix = L"_redacted";
    bool overwrite = false;

    bool operator==(const OutputOptions&) const = default;
};

// The state of the options dialog's controls.
struct OutputOptionControls {
    bool specific = false;  // the chosen-folder radio button, else same folder
    std::wstring folder;
    bool keep = false;  // the keep-name radio button, else add to name
    std::wstring before;
    std::wstring after;
    bool overwrite = false;
};

// The controls showing `options`: the folder edit without the "/" the write-back appended.
OutputOptionControls ControlsOf(const OutputOptions& options);

// The key of the first check of OK that fails, in order: no folder chosen
// ("IDS_STRING_CHOSEFOLDER"), results that can only overwrite their sources without the overwrite
// box ("IDS_STRING_OUTPUTTIP"), adding to the name with nothing to add ("IDS_STRING_FIXTIP").
// Empty when OK may write the record back.
std::string_view FailedOkCheck(const OutputOptionControls& controls);

// OK is disabled exactly while a chosen folder is asked for and the folder edit is empty.
bool OkEnabled(const OutputOptionControls& controls);

// Whether the results cannot fall on their sources: a chosen folder, or a prefix or suffix.
bool WouldDiffer(const OutputOptionControls& controls);

// The record the controls give at OK. Fields the controls don't set keep their values in
// `previous` (the suffix when the name is kept).
OutputOptions WriteBack(const OutputOptionControls& controls, const OutputOptions& previous);

// Whether a file name may hold `c`; the prefix and suffix edits refuse the others.
bool IsFileNameCharacter(wchar_t c);
// `text` without the characters a file name cannot hold.
std::wstring FileNameCharactersOf(std::wstring_view text);
