// The profile folder of one run: preferences, plug-in settings and the user data folder live in
// it. Without a folder given, a fresh temporary folder is made and removed again at the end.
#pragma once

#include <filesystem>

namespace pdfhost {

class Profile {
  public:
    // Creates `folder` (and its user data folder) when missing; throws std::runtime_error when
    // that is impossible.
    explicit Profile(std::filesystem::path folder);
    ~Profile();
    Profile(const Profile&) = delete;
    Profile& operator=(const Profile&) = delete;

    const std::filesystem::path& Folder() const { return folder_; }
    std::filesystem::path UserDataFolder() const { return folder_ / "userdata"; }
    std::filesystem::path PreferencesFile() const { return folder_ / "preferences.json"; }
    std::filesystem::path PluginSettingsFile() const { return folder_ / "plugin-settings.json"; }
    bool IsTemporary() const { return temporary_; }

  private:
    std::filesystem::path folder_;
    bool temporary_ = false;
};

}  // namespace pdfhost
