// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/qt_downloads.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <new>
#include <string_view>
#include <vector>

#include <QUrl>

#include "platform/portable/http_answer.h"
#include "platform/qt/later.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/web_connection.h"
#include "text/statement.h"

namespace veltrin {
namespace {

// Bytes of a piece of a body. A text that grew to a whole body would be there twice, and
// thrice, on its way.
constexpr std::size_t kPiece = std::size_t{1024} * 1024;

// Places that a read goes on to, one after the other; the number of browsers (Fetch
// Standard, section 4.4).
constexpr int kMostRedirections = 20;

// Statuses that tell another place to look at (RFC 9110, section 15.4).
constexpr std::array kRedirections{301, 302, 303, 307, 308};

const QString kHttp = QStringLiteral("http");
const QString kHttps = QStringLiteral("https");

bool isOfTheWeb(const QUrl& url) {
  const bool isKnown = url.scheme() == kHttp || url.scheme() == kHttps;
  return url.isValid() && isKnown && !url.host().isEmpty();
}

QUrl urlOf(const std::string& target) {
  if (target.empty()) throw StatementFailed("The URL is empty", kInvalidProcedureCall);
  QUrl url(toQt(target));
  if (target.find('\0') != std::string::npos || !isOfTheWeb(url)) {
    throw StatementFailed("This is no URL of http or https with a host: " + target,
                          kInvalidProcedureCall);
  }
  return url;
}

// A body in pieces, which takes no memory for what has not come.
class Pieces {
 public:
  void append(std::string_view bytes) {
    while (!bytes.empty()) {
      if (pieces_.empty() || pieces_.back().size() == kPiece) begin();
      std::string& piece = pieces_.back();
      const std::size_t taken = std::min(bytes.size(), kPiece - piece.size());
      piece.append(bytes.substr(0, taken));
      bytes.remove_prefix(taken);
    }
  }

  std::vector<std::string> take() { return std::move(pieces_); }

 private:
  // The first piece grows with what comes, as most bodies are small.
  void begin() {
    std::string piece;
    if (!pieces_.empty()) piece.reserve(kPiece);
    pieces_.push_back(std::move(piece));
  }

  std::vector<std::string> pieces_;
};

// What comes is only noted; the routines are told behind it, so that one of them that pumps
// or destroys the read finds it in good order.
class HttpRead : public Downloads::Read {
 public:
  HttpRead(HostLookup::Resolver resolver, const QUrl& url, std::string name,
           Downloads::Routines routines)
      : resolver_(std::move(resolver)),
        name_(std::move(name)),
        routines_(std::make_shared<const Downloads::Routines>(std::move(routines))) {
    begin(url);
  }

 private:
  void begin(const QUrl& url);
  void collect(std::string_view bytes);
  void arrived(std::string_view bytes);
  void ended(bool inGoodOrder);
  void goOn();
  void follow();
  void finish(bool succeeded);
  bool hasBody() const { return answer_.status() >= 200 && answer_.status() < 300; }
  AsyncProperty property() const;
  void tellProgress();
  void tellEnd();

  HostLookup::Resolver resolver_;
  std::string name_;
  std::shared_ptr<const Downloads::Routines> routines_;  // a running one outlives its read
  QUrl url_;
  int redirections_ = 0;
  HttpAnswer answer_{{}};
  Pieces body_;
  std::int64_t arrived_ = 0;
  std::int64_t noted_ = 0;  // of them, those that progress has told or is about to tell
  bool isProgressDue_ = false;
  bool hasSucceeded_ = false;
  std::unique_ptr<WebConnection> connection_;
  Later later_;  // what is told; goes first
};

void HttpRead::begin(const QUrl& url) {
  url_ = url;
  answer_ = HttpAnswer([this](std::string_view bytes) { collect(bytes); });
  connection_ = std::make_unique<WebConnection>(
      resolver_, url,
      WebConnection::Routines{[this](std::string_view bytes) { arrived(bytes); },
                              [this](bool inGoodOrder) { ended(inGoodOrder); }});
}

void HttpRead::collect(std::string_view bytes) {
  if (!hasBody()) return;
  arrived_ += static_cast<std::int64_t>(bytes.size());
  body_.append(bytes);
}

void HttpRead::arrived(std::string_view bytes) {
  try {
    answer_.take(bytes);
  } catch (const std::bad_alloc&) {
    return finish(false);
  }
  goOn();
}

void HttpRead::ended(bool inGoodOrder) {
  if (!inGoodOrder) return finish(false);
  answer_.close();
  goOn();
}

void HttpRead::goOn() {
  if (arrived_ > noted_ && !isProgressDue_) {
    isProgressDue_ = true;
    later_.call([this] { tellProgress(); });
  }
  if (answer_.hasFailed()) return finish(false);
  if (!answer_.hasHead()) return;
  if (std::find(kRedirections.begin(), kRedirections.end(), answer_.status()) !=
      kRedirections.end()) {
    return follow();
  }
  if (!hasBody()) return finish(false);
  if (answer_.isWhole()) finish(true);
}

// Never from a secured place to one that is not, whoever says so.
void HttpRead::follow() {
  const QUrl place =
      url_.resolved(QUrl::fromEncoded(QByteArray::fromStdString(answer_.location())));
  const bool isLessSafe = url_.scheme() == kHttps && place.scheme() != kHttps;
  if (answer_.location().empty() || !isOfTheWeb(place) || isLessSafe) return finish(false);
  if (++redirections_ > kMostRedirections) return finish(false);
  begin(place);
}

void HttpRead::finish(bool succeeded) {
  connection_.reset();
  hasSucceeded_ = succeeded;
  if (!succeeded) body_ = Pieces();
  later_.call([this] { tellEnd(); });
}

AsyncProperty HttpRead::property() const {
  AsyncProperty property;
  property.PropertyName = name_;
  property.BytesRead = countIn32Bits(arrived_);
  property.arrived = arrived_;
  return property;
}

// The last statement of these is the call: the read may not live on behind it.
void HttpRead::tellProgress() {
  isProgressDue_ = false;
  noted_ = arrived_;
  AsyncProperty progress = property();
  progress.BytesMax = countIn32Bits(std::max<std::int64_t>(answer_.length(), 0));
  const auto routines = routines_;
  if (routines->progress) routines->progress(progress);
}

void HttpRead::tellEnd() {
  AsyncProperty whole = property();
  if (hasSucceeded_) {
    whole.BytesMax = whole.BytesRead;
    whole.Value = body_.take();
  }
  const auto routines = routines_;
  if (routines->complete) routines->complete(std::move(whole));
}

}  // namespace

std::unique_ptr<Downloads::Read> QtDownloads::AsyncRead(const std::string& target,
                                                        int /*asyncType*/,
                                                        const std::string& propertyName,
                                                        int /*options*/, Routines routines) {
  return std::make_unique<HttpRead>(resolver_, urlOf(target), propertyName, std::move(routines));
}

}  // namespace veltrin
