#include "monitor/exporter/TlsFiles.hpp"

#include <gnutls/gnutls.h>
#include <gnutls/x509.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <ios>
#include <iterator>
#include <memory>
#include <type_traits>

#include "monitor/Failure.hpp"

namespace halvermonte {
namespace {

std::string contentOf(const std::string& option, const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string text(std::istreambuf_iterator<char>(file), {});
  if (!file.is_open() || file.bad() || text.empty()) {
    throw Failure(option + " " + path + ": " +
                  (file.is_open() ? "is empty or unreadable" : std::strerror(errno)));
  }
  return text;
}

gnutls_datum_t datumOf(std::string& text) {
  return {reinterpret_cast<unsigned char*>(text.data()), static_cast<unsigned>(text.size())};
}

struct FreeCredentials {
  void operator()(gnutls_certificate_credentials_t credentials) const {
    gnutls_certificate_free_credentials(credentials);
  }
};
struct FreeKey {
  void operator()(gnutls_x509_privkey_t key) const { gnutls_x509_privkey_deinit(key); }
};

template <class Handle, class Free>
using Owned = std::unique_ptr<std::remove_pointer_t<Handle>, Free>;

void expectKey(const std::string& path, std::string& text) {
  gnutls_x509_privkey_t key = nullptr;
  gnutls_x509_privkey_init(&key);
  const Owned<gnutls_x509_privkey_t, FreeKey> owned(key);
  const gnutls_datum_t datum = datumOf(text);
  if (gnutls_x509_privkey_import2(key, &datum, GNUTLS_X509_FMT_PEM, nullptr, 0) != 0) {
    throw Failure("--tls-key " + path + ": expected a private key in PEM without a password",
                  ExitStatus::wrongUse);
  }
}

}  // namespace

TlsFiles readTlsFiles(const std::string& certificatePath, const std::string& keyPath) {
  TlsFiles files{.certificate = contentOf("--tls-certificate", certificatePath),
                 .key = contentOf("--tls-key", keyPath)};
  expectKey(keyPath, files.key);
  gnutls_certificate_credentials_t credentials = nullptr;
  gnutls_certificate_allocate_credentials(&credentials);
  const Owned<gnutls_certificate_credentials_t, FreeCredentials> owned(credentials);
  const gnutls_datum_t certificate = datumOf(files.certificate), key = datumOf(files.key);
  const int result =
      gnutls_certificate_set_x509_key_mem(credentials, &certificate, &key, GNUTLS_X509_FMT_PEM);
  if (result == GNUTLS_E_CERTIFICATE_KEY_MISMATCH) {
    throw Failure("--tls-key " + keyPath + ": is not the key of " + certificatePath,
                  ExitStatus::wrongUse);
  }
  if (result < 0) {
    throw Failure("--tls-certificate " + certificatePath + ": expected a certificate in PEM",
                  ExitStatus::wrongUse);
  }
  return files;
}

}  // namespace halvermonte
