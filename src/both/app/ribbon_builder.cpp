#include "ribbon_builder.h"

#include <iterator>

#include "app/interface_strings.h"

namespace {

constexpr const wchar_t* kCategoryName = L"Ribbon_Category_Protect";
constexpr const wchar_t* kPanelName = L"Protect_Panel_Redaction";
constexpr const wchar_t* kButtonName = L"Sablemark";
constexpr int kDropDownType = 8;

struct Entry {
    const wchar_t* name;
    int title;
    int tooltip;
    const wchar_t* largeImage;
    const wchar_t* smallImage;
    const wchar_t* keyTip;
    HostRibbonExecuteProc execute;
    HostRibbonEnableProc enable;
};

// The ribbon's property operations take an element or an entry in either form.
template <typename Handle>
HostRibbonItem AsItem(Handle handle) {
    return reinterpret_cast<HostRibbonItem>(handle);
}

}  // namespace

bool BuildRibbon(HostApi& host, HostFrame frame, const RibbonProcedures& procedures) {
    HostRibbonBar bar = host.HostRibbonGetBar(frame);
    if (bar == nullptr)
        return false;
    HostRibbonCategory category = host.HostRibbonFindCategory(bar, kCategoryName);
    if (category == nullptr) {
        category = host.HostRibbonAddCategory(bar, kCategoryName,
                                              InterfaceString(ids::kProtectCategory).c_str());
        if (category == nullptr)
            return false;
    }
    HostRibbonPanel panel = host.HostRibbonFindPanel(category, kPanelName);
    if (panel == nullptr) {
        panel = host.HostRibbonAddPanel(category, kPanelName,
                                        InterfaceString(ids::kRedactionPanel).c_str(), 0);
        if (panel == nullptr)
            return false;
    }
    if (host.HostRibbonFindElement(panel, kButtonName) != nullptr)
        return false;
    host.HostRibbonAddElement(panel, kDropDownType, kButtonName,
                              InterfaceString(ids::kSableMark).c_str(), 0);
    HostRibbonElement button = host.HostRibbonFindElement(panel, kButtonName);
    if (button == nullptr)
        return false;

    host.HostRibbonSetTooltip(AsItem(button), InterfaceString(ids::kSableMarkTooltip).c_str());
    host.HostRibbonSetImages(AsItem(button), L"Ribbon_Protect_Sable_Mark_32",
                             L"Ribbon_Protect_Sable_Mark_16");
    host.HostRibbonSetKeyTip(AsItem(button), L"B4");

    const Entry entries[] = {
        {L"AutoRedaction", ids::kAutoRedaction, ids::kAutoRedactionTooltip,
         L"Ribbon_Protect_Auto Redaction_32", L"Ribbon_Protect_Auto Redaction_16", L"A",
         procedures.autoRedaction, procedures.autoRedactionEnabled},
        {L"BatchRedact", ids::kBatchRedaction, ids::kBatchRedactionTooltip,
         L"Ribbon_Protect_Batch Redaction_32", L"Ribbon_Protect_Batch Redaction_16", L"B",
         procedures.batchRedact, procedures.batchRedactEnabled},
        {L"Profile", ids::kProfile, ids::kProfileTooltip, L"Ribbon_Protect_Profile_32",
         L"Ribbon_Protect_Profile_16", L"C", procedures.profile, nullptr},
    };
    HostRibbonItem items[std::size(entries)] = {};
    for (std::size_t position = 0; position < std::size(entries); ++position) {
        const Entry& entry = entries[position];
        items[position] =
            host.HostRibbonAddSubItem(button, 0, entry.name, InterfaceString(entry.title).c_str(),
                                      static_cast<int>(position), 0, 0, 0);
    }
    for (std::size_t i = 0; i < std::size(entries); ++i) {
        const Entry& entry = entries[i];
        const HostRibbonItem item = AsItem(host.HostRibbonItemGetButton(items[i]));
        host.HostRibbonSetTooltip(item, InterfaceString(entry.tooltip).c_str());
        host.HostRibbonSetImages(item, entry.largeImage, entry.smallImage);
        host.HostRibbonSetExecuteProc(item, entry.execute);
        if (entry.enable != nullptr)
            host.HostRibbonSetEnableProc(item, entry.enable);
        host.HostRibbonSetKeyTip(item, entry.keyTip);
    }
    return true;
}
