#include "document/cloud_drive.h"

#include <string_view>

namespace {

struct CloudDrive {
    std::wstring_view plugin;
    const wchar_t* drive;
};

constexpr CloudDrive kCloudDrives[] = {
    {L"TarvoInnerPluginIntegrateWithSP", L"sharepoint"},
    {L"TarvoInnerPluginShareFile", L"sharefile"},
    {L"TarvoInnerPluginiManageWork", L"imanage9"},
    {L"TarvoInnerPluginImanage10", L"imanage10"},
    {L"TarvoInnerPluginNdOffice", L"ndoffice"},
    {L"TarvoInnerPluginOneDrive", L"onedrive"},
    {L"TarvoInnerPluginGoogleDrive", L"googledrive"},
    {L"TarvoInnerPluginBoxPlugin", L"box"},
    {L"TarvoInnerPluginDropboxPlugin", L"dropbox"},
    {L"TarvoInnerPluginOpenText", L"edocsdm"},
    {L"TarvoInnerPluginDMSforLegal", L"dmsforlegal"},
};

}  // namespace

std::wstring DriveOfPlugin(const std::wstring& pluginName) {
    for (const CloudDrive& entry : kCloudDrives) {
        if (entry.plugin == pluginName)
            return entry.drive;
    }
    return L"local";
}
