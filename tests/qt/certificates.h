#pragma once

#include <QFile>
#include <QProcess>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QTemporaryDir>
#include <string>

namespace veloran::test {

/// An authority made up for a test, and the certificate it has given to a server of such names.
/// Made by the command `openssl`.
class Certificates {
  public:
    explicit Certificates(const QByteArray& names = "IP:127.0.0.1,DNS:localhost") {
        write("names", "subjectAltName=" + names + "\n");
        run({"req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes",
             "-days", "2", "-subj", "/CN=Authority of a test", "-keyout", "authority.key", "-out",
             "authority.pem"});
        run({"req", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes", "-subj",
             "/CN=Server of a test", "-keyout", "server.key", "-out", "server.request"});
        run({"x509", "-req", "-in", "server.request", "-CA", "authority.pem", "-CAkey",
             "authority.key", "-CAcreateserial", "-days", "2", "-extfile", "names", "-out",
             "server.pem"});
    }

    /// What went wrong while they were made; empty if nothing did.
    const std::string& error() const { return error_; }
    std::string authority() const { return read("authority.pem").toStdString(); }
    QSslConfiguration ofServer() const {
        QSslConfiguration configuration;
        configuration.setLocalCertificate(QSslCertificate(read("server.pem")));
        configuration.setPrivateKey(QSslKey(read("server.key"), QSsl::Ec));
        return configuration;
    }

  private:
    void run(const QStringList& arguments) {
        if (!error_.empty()) return;
        QProcess openssl;
        openssl.setWorkingDirectory(directory_.path());
        openssl.start("openssl", arguments);
        const bool isDone = openssl.waitForFinished(120'000) && openssl.exitCode() == 0;
        if (isDone && openssl.exitStatus() == QProcess::NormalExit) return;
        error_ = "openssl " + arguments.join(' ').toStdString() + ": " +
                 openssl.errorString().toStdString() + "\n" +
                 openssl.readAllStandardError().toStdString();
    }
    void write(const char* name, const QByteArray& content) {
        QFile file(directory_.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) < 0) error_ = name;
    }
    QByteArray read(const char* name) const {
        QFile file(directory_.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir directory_;
    std::string error_;
};

}  // namespace veloran::test
