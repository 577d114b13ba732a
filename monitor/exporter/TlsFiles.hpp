// The certificate that a server shows, and its key.
#pragma once

#include <string>

namespace halvermonte {

/// The text of both files, in PEM.
struct TlsFiles {
  std::string certificate, key;
};

/// Reads the files. Throws a Failure if one cannot be read, or if they are not a certificate and
/// its key.
TlsFiles readTlsFiles(const std::string& certificatePath, const std::string& keyPath);

}  // namespace halvermonte
