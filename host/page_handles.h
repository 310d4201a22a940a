// PDF pages, page views and page objects handed out as handles. A page view and its page belong
// to the host and live until their document closes; a page made with NDXPageNew belongs to the
// plug-in until NDXPageDestroy. Page objects belong to their page and go when it is parsed again
// or destroyed.
#pragma once

#include <map>
#include <utility>
#include <vector>

#include "engine/page_object_type.h"
#include "handle_pool.h"
#include "host_abi.h"

namespace pdfhost {

struct PdfPageRecord {
    HostDoc document = nullptr;  // null until loaded
    int index = -1;
    bool parsed = false;
    bool hostOwned = false;
    // The kinds of the page's objects as the last parse found them; their handles are made on
    // the first walk over them, so a page parsed only to be read keeps no handle per object.
    std::vector<engine::PageObjectType> types;
    std::vector<NdxPageObject> objects;  // empty, or one handle per entry of `types`
};

struct PageViewRecord {
    HostDoc document = nullptr;
    int index = -1;
    NdxPage page = nullptr;
};

struct PageObjectRecord {
    NdxPage page = nullptr;
    engine::PageObjectType type = engine::PageObjectType::kOther;
};

class PageHandles {
  public:
    // The one view of page `index` of `document`, made on first use with a loaded page.
    HostPageView ViewOf(HostDoc document, int index);
    const PageViewRecord* FindView(HostPageView view) const { return views_.Find(view); }

    NdxPage NewPage() { return pages_.Emplace(); }
    // Points a page of the plug-in at page `index` of `document`, unparsed. The host's own pages
    // are never moved.
    bool LoadPage(NdxPage page, HostDoc document, int index);
    PdfPageRecord* FindPage(NdxPage page) const { return pages_.Find(page); }
    // Frees a page of the plug-in; the host's own pages are not freed this way.
    bool DestroyPage(NdxPage page);
    // Replaces the page's objects and marks it parsed.
    void SetObjects(NdxPage page, std::vector<engine::PageObjectType> types);
    // The handles of the page's objects, in content order, made on first use.
    const std::vector<NdxPageObject>& ObjectsOf(NdxPage page);
    const PageObjectRecord* FindObject(NdxPageObject object) const { return objects_.Find(object); }

    // Forgets the views and host pages of a closing document. The plug-in's own pages of it stay
    // until destroyed but no longer reach the document.
    void ForgetDocument(HostDoc document);

  private:
    void DropObjectsOf(NdxPage page);

    HandlePool<NdxPage, PdfPageRecord> pages_;
    HandlePool<HostPageView, PageViewRecord> views_;
    HandlePool<NdxPageObject, PageObjectRecord> objects_;
    std::map<std::pair<HostDoc, int>, HostPageView> viewIndex_;
};

}  // namespace pdfhost
