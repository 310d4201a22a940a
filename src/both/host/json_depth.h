// The one nesting limit of every JSON text that crosses the bridge or a file that the plug-in or
// its host reads. The JSON readers recurse once per level and give up with an exception past
// their own limit; a text is checked against this lower one first, in one pass, and refused as
// unreadable.
#pragma once

#include <string_view>

inline constexpr int kMaxJsonDepth = 256;

// Whether the arrays and objects of `text` nest at most `limit` deep. Brackets inside strings do
// not count; anything else that is not JSON is left to the reader.
inline bool JsonDepthWithin(std::string_view text, int limit = kMaxJsonDepth) {
    int depth = 0;
    bool inString = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (inString) {
            if (c == '\\')
                ++i;
            else if (c == '"')
                inString = false;
        } else if (c == '"') {
            inString = true;
        } else if (c == '[' || c == '{') {
            if (++depth > limit)
                return false;
        } else if (c == ']' || c == '}') {
            --depth;
        }
    }
    return true;
}
