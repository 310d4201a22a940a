// The benchmark corpus: a long text document with sensitive terms scattered through it, and the
// terms themselves.
#pragma once

#include <string>
#include <vector>

namespace bench {

// Twenty distinct terms; none is part of another or of the filler text.
const std::vector<std::string>& SensitiveTerms();

}  // namespace bench
