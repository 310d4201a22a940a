#include "batch_texts.h"

#include "keyed_texts.h"

namespace {

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

QString BatchText(std::string_view key) {
    return TextOfKey(kBatchTexts, key);
}
