// Functions 1 and 2 of the "Browser Extension HFT" table: the web view that the host lends to a
// plug-in's window (see ui/web_page_view.h).
#include <QWidget>

#include "tables/host_tables.h"
#include "tables/table_support.h"
#include "ui/web_page_view.h"

namespace pdfhost {
namespace {

using namespace tables;
using hostops::ExtOp;

// Opens a view over `parent` on `url` (nothing is loaded for an empty address) and hands it out in
// `viewOut`. The record's callback serves the page's DispatchFun calls. 1 on success.
int BrowserExtOpenWebPage(const wchar_t* url, HostWindow parent, HostWebPageRecord* record,
                          HostWebView* viewOut) {
    return Guarded(0, [&](HostApp&) {
        auto* window = reinterpret_cast<QWidget*>(parent);
        if (window == nullptr || record == nullptr || viewOut == nullptr)
            return 0;
        auto* view = new WebPageView(window, *record);
        if (url != nullptr && *url != 0)
            view->navigate(QString::fromWCharArray(url));
        view->show();
        *viewOut = reinterpret_cast<HostWebView>(static_cast<QWidget*>(view));
        return 1;
    });
}

// Takes down the views lent to `window`.
void BrowserExtCloseWebPage(HostWindow window) {
    Guarded([&](HostApp&) {
        auto* owner = reinterpret_cast<QWidget*>(window);
        if (owner == nullptr)
            return;
        for (WebPageView* view : owner->findChildren<WebPageView*>(
                 QString::fromLatin1(WebPageView::kObjectName), Qt::FindDirectChildrenOnly)) {
            view->hide();
            view->deleteLater();
        }
    });
}

}  // namespace

void RegisterWebPageFunctions(ExtensionRegistry& extensions) {
    extensions.Register<ExtOp::BrowserExtOpenWebPage>(&BrowserExtOpenWebPage);
    extensions.Register<ExtOp::BrowserExtCloseWebPage>(&BrowserExtCloseWebPage);
}

}  // namespace pdfhost
