// Where the host keeps this plug-in's values.
#pragma once

// The plug-in settings section ("bLoad").
inline constexpr const wchar_t* kPluginSettingsSection = L"plugins\\Installed\\TarvoSablemark";
// The host preferences of the plug-in: "welcome", "lastTime", "Greeting".
inline constexpr const wchar_t* kPluginPreferencesSection = L"Installed\\TarvoSablemark";
