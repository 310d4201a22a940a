#include "interface_strings.h"

std::wstring InterfaceString(int id) {
    switch (id) {
        case ids::kGreetingTip:
            return L"<table><tr><td>Easily remove confidential contents in your documents<br>by "
                   L"clicking on <b>\"Sable Mark\"</b> on the toolbar<br>on the top panel. Then "
                   L"click on <b>\"Auto Redaction\"</b>.</td></tr></table>";
        case ids::kProtectCategory:
            return L"Protect";
        case ids::kRedactionPanel:
            return L"Redaction";
        case ids::kSableMarkTooltip:
            return L"Let \"Tarvo Sable Mark\" redact your documents automatically.";
        case ids::kAutoRedaction:
            return L"Auto Redaction";
        case ids::kBatchRedaction:
            return L"Batch Redaction";
        case ids::kAutoRedactionTooltip:
            return L"Find && Remove confidential content automatically";
        case ids::kProfile:
            return L"Profile";
        case ids::kSableMark:
            return L"Sable Mark";
        case ids::kBatchRedactionTooltip:
            return L"Find && Remove confidential content in multiple documents in a batch";
        case ids::kProfileTooltip:
            return L"View usage and pricing plan";
        default:
            return {};
    }
}
