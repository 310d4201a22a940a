// The ribbons of the host's main windows as data: one bar per frame, holding categories, panels,
// elements and the entries of drop-down elements. Every node is reached through a handle that is
// never reused, so stale handles are simply not found. Plug-ins add nodes through the ribbon
// table functions; the desktop shows each bar with a RibbonWidget and scripted mode presses
// entries by name. Each bar starts with the host's own "Protect" category and its "Redaction"
// panel, which plug-ins find and fill.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "handle_pool.h"
#include "host_abi.h"

namespace pdfhost {

enum class RibbonKind { kBar, kCategory, kPanel, kElement, kEntry };

struct RibbonNode {
    RibbonKind kind = RibbonKind::kBar;
    uintptr_t handle = 0;
    uintptr_t parent = 0;  // 0 for a bar
    std::wstring name;
    std::wstring title;
    int elementType = 0;  // elements: 8 is a drop-down button with entries
    int position = 0;     // entries: their place in the drop-down
    std::wstring tooltip;
    std::wstring keyTip;
    std::wstring largeImage;
    std::wstring smallImage;
    HostRibbonExecuteProc execute = nullptr;
    HostRibbonEnableProc enable = nullptr;
    uint32_t pluginId = 0;  // the plug-in that added the node; 0 for the host's own
    std::vector<uintptr_t> children;
};

class RibbonModel {
  public:
    static constexpr const wchar_t* kProtectCategory = L"Ribbon_Category_Protect";
    static constexpr const wchar_t* kRedactionPanel = L"Protect_Panel_Redaction";
    static constexpr int kDropDownElement = 8;

    using Listener = std::function<void(uintptr_t bar)>;

    // The bar of a frame, made with the host's own category and panel on first use.
    uintptr_t BarOf(HostFrame frame);
    // The bar of a frame if it has one, else 0.
    uintptr_t ExistingBarOf(HostFrame frame) const;
    // Drops a frame's bar and everything on it.
    void ForgetFrame(HostFrame frame);
    // Drops every node a plug-in added (with what hangs below it): its procedures go with it.
    void RemovePlugin(uint32_t pluginId);

    // The node behind a handle when it is of `kind`; null for any other handle.
    RibbonNode* Find(uintptr_t handle, RibbonKind kind) const;
    // An element or an entry: the nodes whose properties the ribbon operations set.
    RibbonNode* FindButton(uintptr_t handle) const;
    // The child of `parent` with this name and kind, or null.
    RibbonNode* FindChild(uintptr_t parent, RibbonKind kind, const std::wstring& name) const;
    // Adds a child under a node of the kind above it; 0 when `parent` is not such a node.
    uintptr_t AddChild(uintptr_t parent, RibbonKind kind, const std::wstring& name,
                       const std::wstring& title, uint32_t pluginId);

    // The children of a node, entries in the order of their positions.
    std::vector<const RibbonNode*> Children(uintptr_t parent) const;
    // The first entry (or element) of a bar with this name, depth first, or null.
    RibbonNode* FindButtonByName(uintptr_t bar, const std::wstring& name) const;

    // Whether a button may be pressed now: its enable procedure's answer, true without one.
    bool IsEnabled(const RibbonNode& button) const;
    // Runs the execute procedure of an enabled button; false when it is disabled or has none.
    bool Press(uintptr_t button);

    // Listeners are told of every change to a bar (the bar's handle), after it happened.
    int AddListener(Listener listener);
    void RemoveListener(int id);
    // Tells the listener that the nodes stayed but their enabled states may have changed.
    void StatesChanged();
    // A property of a node was set: tells the listener about its bar.
    void Touched(uintptr_t handle);

  private:
    uintptr_t BarHandleOf(uintptr_t handle) const;
    void Erase(uintptr_t handle);

    HandlePool<uintptr_t, RibbonNode> nodes_;
    void Tell(uintptr_t bar) const;

    std::vector<std::pair<HostFrame, uintptr_t>> bars_;
    std::vector<std::pair<int, Listener>> listeners_;
    int lastListener_ = 0;
};

}  // namespace pdfhost
