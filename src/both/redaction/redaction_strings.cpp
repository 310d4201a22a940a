#include "redaction_strings.h"

std::wstring ResourceString(int id) {
    switch (id) {
        case ids::kDownloadingFile:
            return L"Downloading file...";
        case ids::kHighlightSubject:
            return L"Highlight";
        case ids::kRedactSubject:
            return L"Redact";
        case ids::kUploadingFile:
            return L"Uploading file...";
        case ids::kRedactNamedPrompt:
            return L"You have decided to redact the keywords you selected. Once clicking OK, the "
                   L"operation cannot be undone; otherwise, click Cancel to review again.";
        case ids::kPromptTitle:
            return L"Sable Mark";
        case ids::kPdfFiles:
            return L"PDF Files";
        case ids::kRedactAllPrompt:
            return L"You have decided to redact the content you selected. Once clicking OK, the "
                   L"operation cannot be undone; otherwise, click Cancel to review again.";
        default:
            return {};
    }
}
