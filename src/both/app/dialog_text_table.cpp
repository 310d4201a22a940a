#include "dialog_text_table.h"

namespace {

constexpr KeyedText kDialogTexts[] = {
    {"IDS_STRING_WELCOME_TITLE", "Welcome to Sable Mark"},
    {"IDS_STRING_WELCOME_DESCRIPTION",
     "Sable Mark finds personal and confidential content in your PDF documents, such as names, "
     "e-mail addresses, phone, card and ID numbers, and removes it for good."},
    {"IDS_STRING_BULB_TITLE", "Before you start"},
    {"IDS_STRING_BULB_DESCRIPTION",
     "Sign in to your Sable Mark account to redact your documents. New here? Signing up takes a "
     "minute."},
    {"IDS_STRING_BULB_DESCRIPTION_CHANNEL",
     "Sign in with the account of your editor to redact your documents. New here? Signing up "
     "takes a minute."},
    {"IDS_STRING_GET_STARTED", "Get started"},
    {"IDS_STRING_SIGN_UP", "Sign up"},
    {"IDS_STRING_NOT_NOW", "Not now"},
    {"IDS_STRING_DLG_INFO_DES",
     "Sable Mark can find and remove confidential content in the document you are working on. "
     "Open it from the Protect tab of the ribbon."},
};

constexpr KeyedText kBatchTexts[] = {
    {"IDS_BATCH_TITLE", "Batch Redaction"},
    {"IDS_STR_FILEPATH", "Name"},
    {"IDS_STR_FILELOCATION", "Folder"},
    {"IDS_STR_FILESIZE", "Size"},
    {"IDS_STR_FILEMOD", "Modified"},
    {"IDS_STR_ERROR", "Problem"},
    {"IDS_STR_TOTALFILES", "Files: %1"},
    {"IDS_STR_CHECKING", "Checking %1 of %2: %3"},
    {"IDS_STR_PARSEERROR", "The file can't be opened as a PDF document."},
    {"IDS_STR_XFAERRORDES", "The file holds a dynamic (XFA) form, which can't be redacted."},
    {"IDS_STR_PERMISSIONERROR", "The file's security settings don't allow changes or copying."},
    {"IDS_STR_NOIMAGEWARNING", "Text in images is not searched."},
    {"IDS_ADDFILES", "Add Files"},
    {"IDS_ADDFILES_ADDFILES", "Add Files..."},
    {"IDS_ADDFILES_ADDFOLDER", "Add Folder..."},
    {"IDS_ADDFILES_ADDOPENFILES", "Add Open Files..."},
    {"IDS_SUPPORTED_FILES", "PDF documents"},
    {"IDS_BTN_REMOVE", "Remove"},
    {"IDS_BTN_MOVEUP", "Move Up"},
    {"IDS_BTN_MOVEDOWN", "Move Down"},
    {"IDS_BTN_OPTIONS", "Output Options..."},
    {"IDS_BTN_START", "Start"},
    {"IDS_BTN_CANCEL", "Cancel"},
    {"IDS_HINT", "Drop PDF files here or add them with Add Files."},
    {"IDS_STR_NAME", "Name"},
    {"IDS_STR_FILEMODIFYDATE", "Modified"},
    {"IDS_BTN_ADDFILES", "Add"},
    {"IDS_OPENFILES_TITLE", "Add Open Files"},
    {"IDS_NEEDSAVE_MSG", "Save this document first: the batch works on saved files."},
    {"IDS_OUTPUTOPTIONS_TITLE", "Output Options"},
    {"IDS_STR_LOCATION", "Save results"},
    {"IDS_RADIO_SAMEFOLDER", "In the folder of each source file"},
    {"IDS_RADIO_SPECIFIC", "In this folder:"},
    {"IDS_BUTTON_BROWSER", "Browse..."},
    {"IDS_STR_NAMING", "Name results"},
    {"IDS_RADIO_KEEP", "Keep the source file's name"},
    {"IDS_RADIO_ADDFILENAME", "Add to the source file's name"},
    {"IDS_STR_BEFORE", "Before:"},
    {"IDS_STR_AFTER", "After:"},
    {"IDS_CHECK_OVERWRITE", "Overwrite existing files"},
    {"IDS_HELPER_TITLE", "Choose the folder for the redacted files"},
    {"IDS_GW_MUSTOVERWRITING",
     "With these settings the results are saved over the source files, so overwriting must stay "
     "allowed."},
    {"IDS_STRING_CHOSEFOLDER", "Choose a folder for the redacted files."},
    {"IDS_STRING_OUTPUTTIP",
     "The results would replace the source files. Allow overwriting, choose another folder or "
     "add text to the names."},
    {"IDS_STRING_FIXTIP", "Enter the text to add before or after the file names."},
    {"IDS_FILE_OVERWRITE", "Files Will Be Overwritten"},
    {"IDS_STR_SAVEWARNNING", "These files already exist and will be replaced by the batch. Go on?"},
    {"IDS_BTN_CONTINUE", "Continue"},
    {"IDS_RESULT_FAILEDFILES", "Files that were not processed:"},
};

}  // namespace

std::string_view KeyedTextOf(std::span<const KeyedText> table, std::string_view key) {
    for (const KeyedText& entry : table) {
        if (entry.key == key)
            return entry.text;
    }
    return key;
}

std::string_view DialogTextOf(std::string_view key) {
    return KeyedTextOf(kDialogTexts, key);
}

std::span<const KeyedText> BatchTexts() {
    return kBatchTexts;
}

std::string_view BatchTextOf(std::string_view key) {
    return KeyedTextOf(kBatchTexts, key);
}
