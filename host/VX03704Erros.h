// What the host raises. The importers have no exceptions of their own: they turn these into error texts.
#pragma once

#include <stdexcept>
#include <string>

namespace impnfse {

// A text that isn't the number or the date that it should be.
class EConversao : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// A file that can't be opened, read or written.
class EArquivo : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// A document that isn't well-formed, or an element read in a way that its content doesn't allow.
class EXML : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The database refused or is gone. The text is one Portuguese line that says what to do.
class EBanco : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Another process changed the same rows first: from a new transaction the same would do.
class EConflito : public EBanco {
 public:
  using EBanco::EBanco;
};

}  // namespace impnfse
