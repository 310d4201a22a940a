#include "engine/form_tree_cycles.h"

#include <unordered_set>
#include <vector>

#include "engine/mupdf_call.h"

namespace pdfhost::engine {
namespace {

constexpr int kMaxDepth = 64;
// Nodes one document may have explored; past this the walk stops instead of growing with a
// tree that shares its subtrees many times over.
constexpr std::size_t kMaxNodes = 1'000'000;
constexpr const char* kWhat = "cannot check the form field tree";

class FormTreeWalk {
  public:
    explicit FormTreeWalk(const Document& document)
        : document_(document), ctx_(document.fz()), doc_(document.pdf()) {}

    int Run() {
        pdf_obj* fields = CallMupdf(ctx_, kWhat, [&] {
            return pdf_dict_getp(ctx_, pdf_trailer(ctx_, doc_), "Root/AcroForm/Fields");
        });
        WalkKids(fields);
        const int pages = CallMupdf(ctx_, kWhat, [&] { return pdf_count_pages(ctx_, doc_); });
        for (int page = 0; page < pages && explored_.size() < kMaxNodes; ++page) {
            const ObjPtr page_obj = document_.PageObject(page, kWhat);
            pdf_obj* annots = CallMupdf(
                ctx_, kWhat, [&] { return pdf_dict_get(ctx_, page_obj.get(), PDF_NAME(Annots)); });
            const int count = CallMupdf(ctx_, kWhat, [&] { return pdf_array_len(ctx_, annots); });
            for (int i = 0; i < count; ++i)
                CutParentChain(Resolved(annots, i));
        }
        return removed_;
    }

  private:
    struct Frame {
        pdf_obj* node;
        pdf_obj* kids;
        int next;
    };

    pdf_obj* Resolved(pdf_obj* array, int index) {
        return CallMupdf(ctx_, kWhat, [&] {
            pdf_obj* item = pdf_resolve_indirect_chain(ctx_, pdf_array_get(ctx_, array, index));
            return pdf_is_dict(ctx_, item) ? item : nullptr;
        });
    }

    pdf_obj* KidsOf(pdf_obj* node) {
        return CallMupdf(ctx_, kWhat, [&] { return pdf_dict_get(ctx_, node, PDF_NAME(Kids)); });
    }

    void DeleteEntry(pdf_obj* array, int index) {
        CallMupdf(ctx_, kWhat, [&] { pdf_array_delete(ctx_, array, index); });
        ++removed_;
    }

    // Depth first with an explicit stack; a kid that is on the stack closes a loop, one past
    // the depth limit starts a tree too deep to follow. A node explored before is not entered
    // again: whatever loop its subtree had was broken then.
    void WalkKids(pdf_obj* roots) {
        std::vector<Frame> stack;
        std::unordered_set<pdf_obj*> onStack;
        stack.push_back({nullptr, roots, 0});
        while (!stack.empty()) {
            Frame& top = stack.back();
            const int count = CallMupdf(ctx_, kWhat, [&] { return pdf_array_len(ctx_, top.kids); });
            if (top.next >= count || explored_.size() >= kMaxNodes) {
                onStack.erase(top.node);
                if (top.node != nullptr)
                    CutParentChain(top.node);
                stack.pop_back();
                continue;
            }
            const int index = top.next;
            pdf_obj* kid = Resolved(top.kids, index);
            if (kid == nullptr) {
                ++top.next;
            } else if (onStack.count(kid) != 0 || stack.size() > kMaxDepth) {
                DeleteEntry(top.kids, index);
            } else {
                ++top.next;
                if (explored_.insert(kid).second) {
                    onStack.insert(kid);
                    stack.push_back({kid, KidsOf(kid), 0});
                }
            }
        }
    }

    // Follows /Parent from `node`; the entry that leads back into the chain or past the depth
    // limit goes. Chains already known to end are not followed again.
    void CutParentChain(pdf_obj* node) {
        std::unordered_set<pdf_obj*> chain;
        for (int depth = 0; node != nullptr && endsWell_.count(node) == 0; ++depth) {
            chain.insert(node);
            pdf_obj* parent = CallMupdf(ctx_, kWhat, [&] {
                return pdf_resolve_indirect_chain(ctx_, pdf_dict_get(ctx_, node, PDF_NAME(Parent)));
            });
            if (parent != nullptr && (chain.count(parent) != 0 || depth >= kMaxDepth)) {
                CallMupdf(ctx_, kWhat, [&] { pdf_dict_del(ctx_, node, PDF_NAME(Parent)); });
                ++removed_;
                parent = nullptr;
            }
            node = CallMupdf(ctx_, kWhat,
                             [&] { return pdf_is_dict(ctx_, parent) ? parent : nullptr; });
        }
        endsWell_.insert(chain.begin(), chain.end());
    }

    const Document& document_;
    fz_context* ctx_;
    pdf_document* doc_;
    std::unordered_set<pdf_obj*> explored_;
    std::unordered_set<pdf_obj*> endsWell_;
    int removed_ = 0;
};

}  // namespace

int BreakFormTreeCycles(const Document& document) {
    return FormTreeWalk(document).Run();
}

}  // namespace pdfhost::engine
