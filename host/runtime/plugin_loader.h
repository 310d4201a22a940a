// Loads the plug-in libraries (*.tpi) of a folder and carries them through their life: entry
// point, handshake, registration, export, import, initialisation and the main-frame hooks, and at
// the end the frame-closing hooks, unloading and library unload. A plug-in that fails any step is
// dropped and the host goes on; failures are told on stderr.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

#include "loaded_plugin.h"

namespace pdfhost {

class PluginLoader {
  public:
    // Called with a plug-in's id after it was dropped or unloaded, so that the host forgets what
    // the plug-in registered.
    using ForgetFn = std::function<void(uint32_t pluginId)>;

    explicit PluginLoader(ForgetFn forget);
    ~PluginLoader();
    PluginLoader(const PluginLoader&) = delete;
    PluginLoader& operator=(const PluginLoader&) = delete;

    // Loads every *.tpi of `folder` in name order, then runs the export, import and init
    // callbacks of all of them in turn, then tells each plug-in about each frame. Returns how
    // many plug-ins are loaded afterwards.
    std::size_t LoadFolder(const std::filesystem::path& folder,
                           const std::vector<HostFrame>& frames);
    // The same for the given library files, in the given order.
    std::size_t LoadFiles(const std::vector<std::filesystem::path>& files,
                          const std::vector<HostFrame>& frames);

    void FrameCreated(HostFrame frame);
    void FrameClosing(HostFrame frame);
    // Frame-closing hooks for `frames`, then unload callbacks and library unload, newest
    // plug-in first.
    void UnloadAll(const std::vector<HostFrame>& frames);

    const LoadedPlugin* Find(uint32_t id) const;
    const std::vector<std::unique_ptr<LoadedPlugin>>& Plugins() const { return plugins_; }

  private:
    std::unique_ptr<LoadedPlugin> Start(const std::filesystem::path& path);
    // Runs one life callback of every plug-in, dropping those that answer 0.
    void RunPhase(const char* phase, HostPluginCallback LoadedPlugin::*callback);
    void Drop(std::unique_ptr<LoadedPlugin> plugin);

    ForgetFn forget_;
    uint32_t nextId_ = 1;
    LoadedPlugin* starting_ = nullptr;  // between entry point and registration
    std::vector<std::unique_ptr<LoadedPlugin>> plugins_;
};

}  // namespace pdfhost
