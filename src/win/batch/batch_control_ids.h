// The identifiers of the batch dialogs' controls and of the add menu's entries.
#pragma once

enum BatchControlId : int {
    // The file list
    kFileListView = 1001,
    kAddFilesButton,
    kRemoveButton,
    kMoveUpButton,
    kMoveDownButton,
    kTotalFilesLabel,
    kHintLabel,
    kOptionsButton,
    kAddFilesCommand = 1101,
    kAddFolderCommand,
    kAddOpenFilesCommand,
    // The output options
    kSameFolderRadio = 1201,
    kSpecificRadio,
    kFolderEdit,
    kBrowseButton,
    kKeepRadio,
    kAddToNameRadio,
    kBeforeEdit,
    kAfterEdit,
    kOverwriteCheck,
    kLocationGroup,
    kNamingGroup,
    kBeforeLabel,
    kAfterLabel,
    // The files a batch would overwrite, and the host's open documents
    kOverwriteFileList = 1301,
    kOverwriteNote,
    kOpenFilesList = 1401,
    // The result
    kResultPicture = 1501,
    kResultMessage,
    kFailedCaption,
    kFailedList,
    kResultLink,
};
