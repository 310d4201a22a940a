#pragma once

#include <stdexcept>

namespace pdfhost::engine {

// Every failure of the engine, MuPDF's own errors included, reaches callers as this exception.
class Error : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// An encrypted file opened without its password, or with a wrong one.
class PasswordError : public Error {
  public:
    using Error::Error;
};

}  // namespace pdfhost::engine
