#include "qt/qt_http_client.h"

#include <QByteArray>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QUrl>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "qt/gunzip.h"

namespace veloran {

namespace {

/// What has come of one transfer.
struct Transfer {
    std::size_t received = 0;  // bytes, as the server packed them
    std::string plain;
    std::optional<Gunzip> packed;  // instead of `plain`
    bool isBad = false;            // too large, or damaged
};

std::optional<QUrl> webAddress(const std::string& text) {
    QUrl url(QString::fromStdString(text), QUrl::TolerantMode);
    const bool isWeb = url.scheme() == "http" || url.scheme() == "https";
    return url.isValid() && isWeb && !url.host().isEmpty() ? std::optional(url) : std::nullopt;
}

/// Whether the server has answered, be it with an error page. Qt has no error of its own for most
/// statuses from 400 on and tells them as one of these.
bool isAnswered(const QNetworkReply& reply) {
    const auto status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute);
    if (!status.isValid()) return false;
    switch (reply.error()) {
        case QNetworkReply::NoError:
            return true;
        case QNetworkReply::ContentAccessDenied:
        case QNetworkReply::ContentOperationNotPermittedError:
        case QNetworkReply::ContentNotFoundError:
        case QNetworkReply::AuthenticationRequiredError:
        case QNetworkReply::ContentConflictError:
        case QNetworkReply::ContentGoneError:
        case QNetworkReply::UnknownContentError:
        case QNetworkReply::ProtocolInvalidOperationError:
        case QNetworkReply::ProxyAuthenticationRequiredError:
        case QNetworkReply::InternalServerError:
        case QNetworkReply::OperationNotImplementedError:
        case QNetworkReply::ServiceUnavailableError:
        case QNetworkReply::UnknownServerError:
            return status.toInt() >= 400;
        default:
            return false;
    }
}

/// How the bytes have to be read, told before the first of them.
void readHeaders(const QNetworkReply& reply, Transfer& transfer) {
    if (transfer.received > 0) return;
    const auto packing = reply.rawHeader("Content-Encoding").trimmed().toLower();
    if (packing.isEmpty() || packing == "identity") return;
    transfer.isBad = packing != "gzip" && packing != "x-gzip";
    transfer.packed.emplace(HttpClient::kLargestBody);
}

void takeBytes(QNetworkReply& reply, Transfer& transfer) {
    if (transfer.isBad) return;
    const QByteArray bytes = reply.readAll();
    if (bytes.isEmpty()) return;
    readHeaders(reply, transfer);
    const std::string_view piece(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    transfer.received += piece.size();
    transfer.isBad = transfer.isBad || transfer.received > HttpClient::kLargestBody ||
                     (transfer.packed && !transfer.packed->feed(piece));
    if (transfer.isBad) {
        reply.abort();
    } else if (!transfer.packed) {
        transfer.plain += piece;
    }
}

/// The body, if all of it has come.
std::optional<std::string> bodyOf(const QNetworkReply& reply, Transfer& transfer) {
    const auto announced = reply.header(QNetworkRequest::ContentLengthHeader);
    if (announced.isValid() && announced.toULongLong() != transfer.received) return std::nullopt;
    readHeaders(reply, transfer);
    if (transfer.isBad) return std::nullopt;
    return transfer.packed ? transfer.packed->finish() : std::move(transfer.plain);
}

}  // namespace

class QtHttpClient::Transfers {
  public:
    Transfers(MainLoop& loop, double idleSeconds) : loop_(loop) {
        manager_.setAutoDeleteReplies(true);
        manager_.setTransferTimeout(static_cast<int>(idleSeconds * 1000));
    }

    ~Transfers() {
        for (auto* reply : manager_.findChildren<QNetworkReply*>()) reply->disconnect();
    }

    void begin(const QUrl& url, Completion completion) {
        QNetworkRequest request(url);
        request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                             QNetworkRequest::NoLessSafeRedirectPolicy);
        // With this line Qt leaves the bytes packed, so that their checksum can be looked at.
        request.setRawHeader("Accept-Encoding", "gzip");
        auto* reply = manager_.get(request);
        auto transfer = std::make_shared<Transfer>();
        QObject::connect(reply, &QIODevice::readyRead, reply,
                         [reply, transfer] { takeBytes(*reply, *transfer); });
        QObject::connect(reply, &QNetworkReply::finished, reply,
                         [this, reply, transfer, completion = std::move(completion)] {
                             finish(*reply, *transfer, completion);
                         });
    }

    void complete(Completion completion, std::optional<std::string> body) {
        loop_.post([alive = std::weak_ptr(alive_), completion = std::move(completion),
                    body = std::move(body)]() mutable {
            if (!alive.expired()) completion(std::move(body));
        });
    }

  private:
    void finish(QNetworkReply& reply, Transfer& transfer, const Completion& completion) {
        const bool answered = isAnswered(reply);
        if (answered) takeBytes(reply, transfer);
        if (!answered || transfer.isBad) return complete(completion, std::nullopt);
        complete(completion, bodyOf(reply, transfer));
    }

    MainLoop& loop_;
    QNetworkAccessManager manager_;
    std::shared_ptr<const bool> alive_ = std::make_shared<bool>(true);
};

QtHttpClient::QtHttpClient(MainLoop& loop, double idleSeconds)
    : transfers_(std::make_unique<Transfers>(loop, idleSeconds)) {}
QtHttpClient::~QtHttpClient() = default;

void QtHttpClient::get(const std::string& url, Completion completion) {
    if (const auto address = webAddress(url)) {
        transfers_->begin(*address, std::move(completion));
    } else {
        transfers_->complete(std::move(completion), std::nullopt);
    }
}

}  // namespace veloran
