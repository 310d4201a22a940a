#include "ui/bubble_notices.h"

#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QTimer>
#include <QWidget>
#include <algorithm>

#include "record_hooks.h"

namespace pdfhost {
namespace {

constexpr int kMargin = 16;

// Where a popup of `size` goes: the lower right corner of the anchor, else of the screen.
QPoint CornerFor(const QSize& size, QWidget* anchor) {
    QRect area;
    if (anchor != nullptr && anchor->isVisible()) {
        area = QRect(anchor->mapToGlobal(QPoint(0, 0)), anchor->size());
    } else if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        area = screen->availableGeometry();
    }
    return area.bottomRight() - QPoint(size.width() + kMargin, size.height() + kMargin);
}

}  // namespace

BubbleNotices::~BubbleNotices() {
    delete popup_.data();
}

HostBubbleSource BubbleNotices::MakeSource(uint32_t pluginId) {
    return sources_.Emplace(Source{pluginId, {}});
}

void BubbleNotices::Register(HostBubbleSource source, HostBubbleRecord* record) {
    Source* found = sources_.Find(source);
    if (found == nullptr || record == nullptr)
        return;
    const bool known = std::any_of(found->records.begin(), found->records.end(),
                                   [&](const Registered& entry) { return entry.record == record; });
    if (!known)
        found->records.push_back({record, false});
}

void BubbleNotices::Unregister(HostBubbleSource source, HostBubbleRecord* record) {
    if (Source* found = sources_.Find(source)) {
        std::erase_if(found->records,
                      [&](const Registered& entry) { return entry.record == record; });
    }
}

bool BubbleNotices::Show(HostBubbleSource source, const std::wstring& text, int milliseconds,
                         int style, QWidget* anchor) {
    if (sources_.Find(source) == nullptr)
        return false;
    Notice notice{text, milliseconds, style};
    if (!headless_)
        Popup(notice, anchor);
    shown_.push_back(std::move(notice));
    return true;
}

void BubbleNotices::SurfaceReady() {
    // The callbacks may register or unregister; collect first, then tell those still there.
    std::vector<HostBubbleRecord*> untold;
    sources_.ForEach([&](Source& source) {
        for (Registered& entry : source.records) {
            if (!entry.told) {
                entry.told = true;
                untold.push_back(entry.record);
            }
        }
    });
    for (HostBubbleRecord* record : untold) {
        bool stillThere = false;
        sources_.ForEach([&](Source& source) {
            stillThere = stillThere || std::any_of(source.records.begin(), source.records.end(),
                                                   [&](const Registered& entry) {
                                                       return entry.record == record;
                                                   });
        });
        if (!stillThere)
            continue;
        if (const auto notify =
                reinterpret_cast<HostBubbleNotifyFn>(HookAt(*record, kBubbleNotify)))
            notify(record->word(kBubbleClientData), 1);
    }
}

void BubbleNotices::RemovePlugin(uint32_t pluginId) {
    sources_.EraseIf([&](const Source& source) { return source.pluginId == pluginId; });
}

void BubbleNotices::Popup(const Notice& notice, QWidget* anchor) {
    delete popup_.data();
    auto* label = new QLabel(QString::fromStdWString(notice.text), nullptr,
                             Qt::ToolTip | Qt::FramelessWindowHint);
    label->setAttribute(Qt::WA_DeleteOnClose);
    label->setTextFormat(Qt::RichText);
    label->setMargin(10);
    label->setStyleSheet("QLabel { background: #fffbe6; border: 1px solid #c8b560; }");
    label->adjustSize();
    label->move(CornerFor(label->size(), anchor));
    label->show();
    popup_ = label;
    if (notice.milliseconds > 0)
        QTimer::singleShot(notice.milliseconds, label, &QWidget::close);
}

}  // namespace pdfhost
