#include "qt/qt_http_client.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QTimer>
#include <QUrl>
#include <optional>
#include <string>
#include <utility>

#include "qt/gunzip.h"

namespace veloran {

namespace {

/// What has come of one transfer.
struct Transfer {
    std::string bytes;  // as the server packed them
    bool isPacked = false;
    bool isBad = false;  // too large, or packed in an unknown way
};

bool isWeb(const QUrl& url) {
    const bool isKnown = url.scheme() == "http" || url.scheme() == "https";
    return url.isValid() && isKnown && !url.host().isEmpty();
}

std::optional<QUrl> webAddress(const std::string& text) {
    QUrl url(QString::fromStdString(text), QUrl::TolerantMode);
    return isWeb(url) ? std::optional(url) : std::nullopt;
}

/// Where the answer leads, if it is a redirect: an empty address where that may not be followed.
std::optional<QUrl> redirection(const QNetworkReply& reply) {
    const auto target = reply.attribute(QNetworkRequest::RedirectionTargetAttribute);
    if (!target.isValid()) return std::nullopt;
    const QUrl url = reply.url().resolved(target.toUrl());
    const bool isLessSafe = reply.url().scheme() == "https" && url.scheme() != "https";
    return isWeb(url) && !isLessSafe ? url : QUrl();
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
    if (!transfer.bytes.empty()) return;
    const auto packing = reply.rawHeader("Content-Encoding").trimmed().toLower();
    if (packing.isEmpty() || packing == "identity") return;
    transfer.isBad = packing != "gzip" && packing != "x-gzip";
    transfer.isPacked = true;
}

void takeBytes(QNetworkReply& reply, Transfer& transfer) {
    if (transfer.isBad) return;
    const QByteArray bytes = reply.readAll();
    if (bytes.isEmpty()) return;
    readHeaders(reply, transfer);
    transfer.bytes.append(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    transfer.isBad = transfer.isBad || transfer.bytes.size() > HttpClient::kLargestBody;
    if (transfer.isBad) reply.abort();
}

/// Whether as much has come as was announced.
bool isWhole(const QNetworkReply& reply, const Transfer& transfer) {
    const auto announced = reply.header(QNetworkRequest::ContentLengthHeader);
    return !announced.isValid() || announced.toULongLong() == transfer.bytes.size();
}

HttpResult unpacked(const std::string& bytes, int status) {
    Gunzip gunzip(HttpClient::kLargestBody);
    if (!gunzip.feed(bytes)) return {};
    auto text = gunzip.finish();
    return text ? HttpResult{std::move(text), status} : HttpResult{};
}

}  // namespace

class QtHttpClient::Transfers {
  public:
    Transfers(MainLoop& loop, WorkerPool& workers, const QtHttpOptions& options)
        : loop_(loop), workers_(workers), wholeSeconds_(options.wholeSeconds) {
        manager_.setAutoDeleteReplies(true);
        manager_.setTransferTimeout(milliseconds(options.idleSeconds));
        if (options.authorities.empty()) return;
        tls_.emplace(QSslConfiguration::defaultConfiguration());
        tls_->addCaCertificates(
            QSslCertificate::fromData(QByteArray::fromStdString(options.authorities)));
    }

    ~Transfers() {
        for (auto* reply : manager_.findChildren<QNetworkReply*>()) reply->disconnect();
    }

    void begin(const QUrl& url, Completion completion) {
        begin(url, {std::move(completion), QDeadlineTimer(milliseconds(wholeSeconds_))});
    }

    void complete(Completion completion, HttpResult result) {
        loop_.post([alive = std::weak_ptr(alive_), completion = std::move(completion),
                    result = std::move(result)]() mutable {
            if (!alive.expired()) completion(std::move(result));
        });
    }

  private:
    /// A GET with all its redirects.
    struct Errand {
        Completion completion;
        QDeadlineTimer end;
        int redirects = 0;
    };

    static int milliseconds(double seconds) { return static_cast<int>(seconds * 1000); }

    void begin(const QUrl& url, Errand errand) {
        QNetworkRequest request(url);
        // Qt may lose the answer when the server closes the connection over which it redirects.
        request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                             QNetworkRequest::ManualRedirectPolicy);
        // With this line Qt leaves the bytes packed, so that their checksum can be looked at.
        request.setRawHeader("Accept-Encoding", "gzip");
        if (tls_) request.setSslConfiguration(*tls_);
        auto* reply = manager_.get(request);
        auto transfer = std::make_shared<Transfer>();
        QObject::connect(reply, &QIODevice::readyRead, reply,
                         [reply, transfer] { takeBytes(*reply, *transfer); });
        QTimer::singleShot(static_cast<int>(errand.end.remainingTime()), Qt::PreciseTimer, reply,
                           [reply] { reply->abort(); });
        QObject::connect(reply, &QNetworkReply::finished, reply,
                         [this, reply, transfer, errand = std::move(errand)] {
                             finish(*reply, *transfer, errand);
                         });
    }

    void follow(const QUrl& url, Errand errand) {
        constexpr int kMostRedirects = 20;
        if (url.isEmpty() || ++errand.redirects > kMostRedirects) {
            complete(std::move(errand.completion), {});
        } else {
            begin(url, std::move(errand));
        }
    }

    void finish(QNetworkReply& reply, Transfer& transfer, const Errand& errand) {
        const auto& completion = errand.completion;
        if (!isAnswered(reply)) return complete(completion, {});
        if (const auto target = redirection(reply)) return follow(*target, errand);
        takeBytes(reply, transfer);
        readHeaders(reply, transfer);
        const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        if (status == kNotModified) return complete(completion, {std::nullopt, status});
        if (transfer.isBad || !isWhole(reply, transfer)) return complete(completion, {});
        if (transfer.isPacked) return unpack(std::move(transfer.bytes), status, completion);
        complete(completion, {std::move(transfer.bytes), status});
    }

    /// The completion travels along and is let go on the main thread.
    void unpack(std::string bytes, int status, Completion completion) {
        workers_.run([bytes = std::move(bytes), status, completion = std::move(completion),
                      alive = std::weak_ptr(alive_), &loop = loop_]() mutable {
            loop.post([result = unpacked(bytes, status), completion = std::move(completion),
                       alive = std::move(alive)]() mutable {
                if (!alive.expired()) completion(std::move(result));
            });
        });
    }

    MainLoop& loop_;
    WorkerPool& workers_;
    double wholeSeconds_;
    QNetworkAccessManager manager_;
    std::optional<QSslConfiguration> tls_;  // Qt's own unless set
    std::shared_ptr<const bool> alive_ = std::make_shared<bool>(true);
};

QtHttpClient::QtHttpClient(MainLoop& loop, WorkerPool& workers, const QtHttpOptions& options)
    : transfers_(std::make_unique<Transfers>(loop, workers, options)) {}
QtHttpClient::~QtHttpClient() = default;

void QtHttpClient::get(const std::string& url, Completion completion) {
    if (const auto address = webAddress(url)) {
        transfers_->begin(*address, std::move(completion));
    } else {
        transfers_->complete(std::move(completion), {});
    }
}

}  // namespace veloran
