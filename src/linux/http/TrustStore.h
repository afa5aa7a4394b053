#pragma once

#include <QList>
#include <QSslCertificate>
#include <QSslConfiguration>

#include <optional>

namespace lumora {

/// The certificates in PEM form that the environment names beside the system's: those in the file
/// SSL_CERT_FILE and in the files of the folders SSL_CERT_DIR (separated by colons). What cannot
/// be read counts as empty; so does the system's own store, where they name it.
QList<QSslCertificate> environmentCertificates();

/// A TLS configuration that trusts the system's certificates and the environment's. Absent when
/// the environment names none, for then the default configuration does, which reads the system's
/// store only as far as it needs.
std::optional<QSslConfiguration> environmentTrust();

} // namespace lumora
