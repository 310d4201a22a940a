#include "plugin_loader.h"

#include <algorithm>
#include <iostream>

#include "plugin_call.h"
#include "record_hooks.h"
#include "table_manager.h"

namespace pdfhost {
namespace {

LoadedPlugin& Self(HostHandshake* record) {
    return *static_cast<LoadedPlugin*>(record->host);
}
LoadedPlugin& Self(HostRegistration* record) {
    return *static_cast<LoadedPlugin*>(record->host);
}
std::string TextOf(const char* text) {
    return text != nullptr ? text : "";
}

HostHandshake MakeHandshake(LoadedPlugin& plugin) {
    HostHandshake record{};
    record.size = sizeof(HostHandshake);
    record.getTableManager = [] { return TableManager::Abi(); };
    record.getPluginId = [](HostHandshake* self) { return Self(self).id; };
    record.setRegistrationCallback = [](HostHandshake* self, HostRegistrationFn fn) {
        Self(self).registrationFn = fn;
    };
    record.setSdkVersion = [](HostHandshake* self, uint32_t version) {
        Self(self).sdkVersion = version;
    };
    record.setVersionText = [](HostHandshake* self, const char* text) {
        Self(self).versionText = TextOf(text);
    };
    record.host = &plugin;
    return record;
}

HostRegistration MakeRegistration(LoadedPlugin& plugin) {
    HostRegistration record{};
    record.size = sizeof(HostRegistration);
    record.setPluginName = [](HostRegistration* self, const char* internal, const char* shortName) {
        Self(self).internalName = TextOf(internal);
        Self(self).shortName = TextOf(shortName);
    };
    record.setExportCallback = [](HostRegistration* self, HostPluginCallback fn) {
        Self(self).exportFn = fn;
    };
    record.setImportCallback = [](HostRegistration* self, HostPluginCallback fn) {
        Self(self).importFn = fn;
    };
    record.setInitCallback = [](HostRegistration* self, HostPluginCallback fn) {
        Self(self).initFn = fn;
    };
    record.setUiRecord = [](HostRegistration* self, const HostUiRecord* ui) {
        HostUiRecord& copy = Self(self).ui;
        copy = HostUiRecord{0, {}};
        if (ui == nullptr)
            return;
        copy.size = std::min<uintptr_t>(ui->size, sizeof(HostUiRecord));
        for (std::size_t word = 1; word < HostUiRecord::kWords; ++word) {
            copy.setWord(word, HookAt(*ui, word));
        }
    };
    record.setUnloadCallback = [](HostRegistration* self, HostPluginCallback fn) {
        Self(self).unloadFn = fn;
    };
    record.host = &plugin;
    return record;
}

void CallFrameHook(const LoadedPlugin& plugin, std::size_t word, HostFrame frame) {
    if (void* hook = HookAt(plugin.ui, word))
        CallPluginVoid("window hook", reinterpret_cast<HostFrameHook>(hook), frame);
}

}  // namespace

PluginLoader::PluginLoader(ForgetFn forget) : forget_(std::move(forget)) {}

PluginLoader::~PluginLoader() {
    UnloadAll({});
}

std::size_t PluginLoader::LoadFolder(const std::filesystem::path& folder,
                                     const std::vector<HostFrame>& frames) {
    std::vector<std::filesystem::path> files;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
        if (entry.path().extension() == ".tpi" && !entry.is_directory()) {
            files.push_back(entry.path());
        }
    }
    if (error) {
        std::cerr << "pdfhost: cannot read plug-in folder " << folder << ": " << error.message()
                  << '\n';
    }
    std::sort(files.begin(), files.end());
    return LoadFiles(files, frames);
}

std::size_t PluginLoader::LoadFiles(const std::vector<std::filesystem::path>& files,
                                    const std::vector<HostFrame>& frames) {
    for (const auto& file : files) {
        if (auto plugin = Start(file))
            plugins_.push_back(std::move(plugin));
    }
    RunPhase("export", &LoadedPlugin::exportFn);
    RunPhase("import", &LoadedPlugin::importFn);
    RunPhase("init", &LoadedPlugin::initFn);
    for (const HostFrame frame : frames)
        FrameCreated(frame);
    return plugins_.size();
}

std::unique_ptr<LoadedPlugin> PluginLoader::Start(const std::filesystem::path& path) {
    auto plugin = std::make_unique<LoadedPlugin>();
    plugin->id = nextId_++;
    plugin->path = std::filesystem::absolute(path);
    plugin->library = std::make_unique<SharedLibrary>(plugin->path);
    const auto fail = [&](const std::string& why) {
        starting_ = nullptr;
        std::cerr << "pdfhost: plug-in " << path << " not loaded: " << why << '\n';
        Drop(std::move(plugin));
        return nullptr;
    };
    if (!plugin->library->IsLoaded())
        return fail(plugin->library->Error());

    auto* entry = reinterpret_cast<PlugInMainFn>(plugin->library->Symbol("PlugInMain"));
    if (entry == nullptr)
        return fail("no PlugInMain");
    uint32_t version = 0;
    HostHandshakeFn handshakeFn = nullptr;
    if (CallPlugin("PlugInMain", 0, entry, &version, &handshakeFn) == 0)
        return fail("PlugInMain failed");
    if (version != kHostInterfaceVersion) {
        return fail("interface version " + std::to_string(version) + " instead of " +
                    std::to_string(kHostInterfaceVersion));
    }
    if (handshakeFn == nullptr)
        return fail("no handshake function");

    starting_ = plugin.get();
    plugin->handshake = MakeHandshake(*plugin);
    if (CallPlugin("handshake", 0, handshakeFn, kHostInterfaceVersion, &plugin->handshake) == 0) {
        return fail("handshake refused");
    }
    if (plugin->registrationFn == nullptr)
        return fail("no registration callback");

    plugin->registration = MakeRegistration(*plugin);
    if (CallPlugin("registration", 0, plugin->registrationFn, kHostInterfaceVersion,
                   &plugin->registration) == 0) {
        return fail("registration refused");
    }
    starting_ = nullptr;
    return plugin;
}

void PluginLoader::RunPhase(const char* phase, HostPluginCallback LoadedPlugin::*callback) {
    // A callback may load documents or cause events; the list only shrinks here.
    for (std::size_t i = 0; i < plugins_.size();) {
        const HostPluginCallback fn = (*plugins_[i]).*callback;
        if (fn == nullptr || CallPlugin(phase, 0, fn) != 0) {
            ++i;
            continue;
        }
        std::cerr << "pdfhost: plug-in " << plugins_[i]->path << " dropped: its " << phase
                  << " callback failed\n";
        auto dropped = std::move(plugins_[i]);
        plugins_.erase(plugins_.begin() + static_cast<std::ptrdiff_t>(i));
        Drop(std::move(dropped));
    }
}

void PluginLoader::FrameCreated(HostFrame frame) {
    for (const auto& plugin : plugins_)
        CallFrameHook(*plugin, kUiMainFrameCreated, frame);
}

void PluginLoader::FrameClosing(HostFrame frame) {
    for (const auto& plugin : plugins_)
        CallFrameHook(*plugin, kUiMainFrameClosing, frame);
}

void PluginLoader::UnloadAll(const std::vector<HostFrame>& frames) {
    for (const HostFrame frame : frames)
        FrameClosing(frame);
    while (!plugins_.empty()) {
        auto plugin = std::move(plugins_.back());
        plugins_.pop_back();
        if (plugin->unloadFn != nullptr)
            CallPlugin("unload", 0, plugin->unloadFn);
        Drop(std::move(plugin));
    }
}

void PluginLoader::Drop(std::unique_ptr<LoadedPlugin> plugin) {
    const uint32_t id = plugin->id;
    // Unloading runs the library's destructors, which may still call the host.
    plugin->library->Close();
    plugin.reset();
    if (forget_)
        forget_(id);
}

const LoadedPlugin* PluginLoader::Find(uint32_t id) const {
    if (starting_ != nullptr && starting_->id == id)
        return starting_;
    const auto it = std::find_if(plugins_.begin(), plugins_.end(),
                                 [&](const auto& plugin) { return plugin->id == id; });
    return it == plugins_.end() ? nullptr : it->get();
}

}  // namespace pdfhost
