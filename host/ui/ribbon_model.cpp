#include "ui/ribbon_model.h"

#include <algorithm>

#include "plugin_call.h"

namespace pdfhost {
namespace {

// The kind a child of each kind must have.
bool IsChildKind(RibbonKind parent, RibbonKind child) {
    switch (parent) {
        case RibbonKind::kBar:
            return child == RibbonKind::kCategory;
        case RibbonKind::kCategory:
            return child == RibbonKind::kPanel;
        case RibbonKind::kPanel:
            return child == RibbonKind::kElement;
        case RibbonKind::kElement:
            return child == RibbonKind::kEntry;
        case RibbonKind::kEntry:
            return false;
    }
    return false;
}

}  // namespace

uintptr_t RibbonModel::BarOf(HostFrame frame) {
    if (const uintptr_t existing = ExistingBarOf(frame))
        return existing;
    auto bar = std::make_unique<RibbonNode>();
    bar->kind = RibbonKind::kBar;
    RibbonNode& node = *bar;
    node.handle = nodes_.Add(std::move(bar));
    bars_.emplace_back(frame, node.handle);
    const uintptr_t category =
        AddChild(node.handle, RibbonKind::kCategory, kProtectCategory, L"Protect", 0);
    AddChild(category, RibbonKind::kPanel, kRedactionPanel, L"Redaction", 0);
    return node.handle;
}

uintptr_t RibbonModel::ExistingBarOf(HostFrame frame) const {
    const auto it = std::find_if(bars_.begin(), bars_.end(),
                                 [&](const auto& entry) { return entry.first == frame; });
    return it == bars_.end() ? 0 : it->second;
}

void RibbonModel::ForgetFrame(HostFrame frame) {
    const uintptr_t bar = ExistingBarOf(frame);
    if (bar == 0)
        return;
    std::erase_if(bars_, [&](const auto& entry) { return entry.first == frame; });
    Erase(bar);
    Tell(bar);
}

void RibbonModel::RemovePlugin(uint32_t pluginId) {
    if (pluginId == 0)
        return;
    std::vector<uintptr_t> added;
    nodes_.ForEach([&](RibbonNode& node) {
        if (node.pluginId == pluginId)
            added.push_back(node.handle);
    });
    std::vector<uintptr_t> touchedBars;
    for (const uintptr_t handle : added) {
        // An earlier erase may have taken this node with its parent.
        if (nodes_.Find(handle) == nullptr)
            continue;
        touchedBars.push_back(BarHandleOf(handle));
        Erase(handle);
    }
    std::sort(touchedBars.begin(), touchedBars.end());
    touchedBars.erase(std::unique(touchedBars.begin(), touchedBars.end()), touchedBars.end());
    for (const uintptr_t bar : touchedBars)
        Tell(bar);
}

RibbonNode* RibbonModel::Find(uintptr_t handle, RibbonKind kind) const {
    RibbonNode* node = nodes_.Find(handle);
    return node != nullptr && node->kind == kind ? node : nullptr;
}

RibbonNode* RibbonModel::FindButton(uintptr_t handle) const {
    RibbonNode* node = nodes_.Find(handle);
    if (node == nullptr)
        return nullptr;
    return node->kind == RibbonKind::kElement || node->kind == RibbonKind::kEntry ? node : nullptr;
}

RibbonNode* RibbonModel::FindChild(uintptr_t parent, RibbonKind kind,
                                   const std::wstring& name) const {
    const RibbonNode* node = nodes_.Find(parent);
    if (node == nullptr)
        return nullptr;
    for (const uintptr_t child : node->children) {
        RibbonNode* found = nodes_.Find(child);
        if (found != nullptr && found->kind == kind && found->name == name)
            return found;
    }
    return nullptr;
}

uintptr_t RibbonModel::AddChild(uintptr_t parent, RibbonKind kind, const std::wstring& name,
                                const std::wstring& title, uint32_t pluginId) {
    RibbonNode* above = nodes_.Find(parent);
    if (above == nullptr || !IsChildKind(above->kind, kind))
        return 0;
    auto child = std::make_unique<RibbonNode>();
    child->kind = kind;
    child->parent = parent;
    child->name = name;
    child->title = title;
    child->pluginId = pluginId;
    RibbonNode& node = *child;
    node.handle = nodes_.Add(std::move(child));
    above->children.push_back(node.handle);
    Tell(BarHandleOf(parent));
    return node.handle;
}

std::vector<const RibbonNode*> RibbonModel::Children(uintptr_t parent) const {
    std::vector<const RibbonNode*> children;
    if (const RibbonNode* node = nodes_.Find(parent)) {
        for (const uintptr_t child : node->children) {
            if (const RibbonNode* found = nodes_.Find(child))
                children.push_back(found);
        }
    }
    std::stable_sort(children.begin(), children.end(), [](const auto* a, const auto* b) {
        return a->kind == RibbonKind::kEntry && b->kind == RibbonKind::kEntry &&
               a->position < b->position;
    });
    return children;
}

RibbonNode* RibbonModel::FindButtonByName(uintptr_t bar, const std::wstring& name) const {
    const RibbonNode* node = nodes_.Find(bar);
    if (node == nullptr)
        return nullptr;
    for (const uintptr_t child : node->children) {
        RibbonNode* found = FindButton(child);
        if (found != nullptr && found->name == name)
            return found;
        if (RibbonNode* below = FindButtonByName(child, name))
            return below;
    }
    return nullptr;
}

bool RibbonModel::IsEnabled(const RibbonNode& button) const {
    if (button.enable == nullptr)
        return true;
    return button.enable(reinterpret_cast<void*>(button.handle)) != 0;
}

bool RibbonModel::Press(uintptr_t button) {
    const RibbonNode* node = FindButton(button);
    if (node == nullptr || node->execute == nullptr || !IsEnabled(*node))
        return false;
    // The procedure may change the ribbon; it only gets the handle.
    const HostRibbonExecuteProc execute = node->execute;
    CallPluginVoid("ribbon command", execute, reinterpret_cast<void*>(button));
    return true;
}

int RibbonModel::AddListener(Listener listener) {
    listeners_.emplace_back(++lastListener_, std::move(listener));
    return lastListener_;
}

void RibbonModel::RemoveListener(int id) {
    std::erase_if(listeners_, [&](const auto& entry) { return entry.first == id; });
}

void RibbonModel::StatesChanged() {
    const auto bars = bars_;
    for (const auto& entry : bars)
        Tell(entry.second);
}

void RibbonModel::Touched(uintptr_t handle) {
    Tell(BarHandleOf(handle));
}

uintptr_t RibbonModel::BarHandleOf(uintptr_t handle) const {
    const RibbonNode* node = nodes_.Find(handle);
    while (node != nullptr && node->kind != RibbonKind::kBar)
        node = nodes_.Find(node->parent);
    return node != nullptr ? node->handle : 0;
}

void RibbonModel::Erase(uintptr_t handle) {
    RibbonNode* node = nodes_.Find(handle);
    if (node == nullptr)
        return;
    const std::vector<uintptr_t> children = node->children;
    for (const uintptr_t child : children)
        Erase(child);
    if (RibbonNode* above = nodes_.Find(node->parent))
        std::erase(above->children, handle);
    nodes_.Erase(handle);
}

void RibbonModel::Tell(uintptr_t bar) const {
    if (bar == 0)
        return;
    const auto listeners = listeners_;
    for (const auto& entry : listeners)
        entry.second(bar);
}

}  // namespace pdfhost
