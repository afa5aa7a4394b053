#pragma once

#include <QByteArray>

namespace lumora {

/// Where Debian keeps the certificates of the authorities that the system trusts, each under a
/// name that OpenSSL finds it by: nothing is read that is not needed.
inline constexpr char systemCertificates[] = "/etc/ssl/certs";

/// The certificates in PEM form that the environment names beside the system's: those in the file
/// SSL_CERT_FILE and in the files of the folders SSL_CERT_DIR (separated by colons). What cannot
/// be read, or is larger than 16 MiB, counts as empty; so does the system's own store, where they
/// name it. Empty when there are none.
[[nodiscard]] QByteArray environmentCertificates();

} // namespace lumora
