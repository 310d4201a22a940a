#include "redaction_corpus.h"

namespace bench {

const std::vector<std::string>& SensitiveTerms() {
    static const std::vector<std::string> terms = {
        "Marta Quillfeather",
        "Tobias Fennick",
        "Ingrid Solvay",
        "Piet van Brakel",
        "Odile Marchetti",
        "marta.q@example.com",
        "t.fennick@example.org",
        "ingrid@solvay.example",
        "+1 555 0134 2287",
        "(555) 201-7788",
        "555-303-4412",
        "4539 1488 0343 6467",
        "5555 5555 5555 4444",
        "DE89 3704 0044 0532",
        "GB82 WEST 1234 5698",
        "HS-20417",
        "HS-31108",
        "1984-03-17",
        "12/05/1979",
        "Orchard Lane 14",
    };
    return terms;
}

}  // namespace bench
