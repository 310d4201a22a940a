// Whether an account server answers, asked before the user is signed in to it: a mistyped
// address would otherwise leave the user signed in to a server that is not there, and every
// later request would fail with a message about being offline.
#pragma once

#include <chrono>
#include <string>

namespace pdfhost {

// Empty when `address` is an http or https address whose server gives any HTTP answer within
// `timeout`; otherwise a sentence for the user that says what is wrong.
std::string AccountServerProblem(const std::string& address, std::chrono::milliseconds timeout);

}  // namespace pdfhost
