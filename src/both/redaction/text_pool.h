// TextPool: one copy of each text that many entries name (file ids, search keys), counted, so
// that an entry holds a view instead of a copy. A text goes when its last holder releases it.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>

class TextPool {
  public:
    // A view of the pool's copy of `text`, held once more. The empty text is no entry.
    std::wstring_view Hold(std::wstring_view text);
    // Lets go of one hold of `text`; the copy goes with its last hold.
    void Release(std::wstring_view text);

    std::size_t size() const { return counts_.size(); }

  private:
    std::map<std::wstring, std::size_t, std::less<>> counts_;
};
