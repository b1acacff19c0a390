#include "lookup/curl_http_control.h"

#include "core/failure.h"
#include "lookup/curl_multi.h"
#include "lookup/curl_on_demand.h"
#include "lookup/received_body.h"

#include <curl/curl.h>

#include <algorithm>
#include <csignal>
#include <limits>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr qsizetype LongestBody = qsizetype{32} * 1024 * 1024;
// What a server says about the length of its body is believed up to here.
constexpr curl_off_t LongestReserve = curl_off_t{1024} * 1024;
constexpr long ReceiveBuffer = 64L * 1024;
constexpr long MostRedirects = 20;
constexpr auto Schemes = "http,https";

struct HeaderListDeleter
{
    void operator()(curl_slist *list) const { curl_slist_free_all(list); }
};
using HeaderList = std::unique_ptr<curl_slist, HeaderListDeleter>;

class CurlControl final : public HttpControl, private CurlMulti::Client
{
public:
    CurlControl(std::shared_ptr<CurlMulti> multi, TextEncoder encode);
    ~CurlControl() override;

    int State() const override { return m_state; }
    bool Busy() const override { return m_state != Closed; }
    int ResponseCode() const override { return m_status; }
    QByteArray Body() const override { return m_body.bytes(); }

    void Get() override { start(nullptr); }
    void Post(const QByteArray &postData) override { start(&postData); }
    void Abort() override;

private:
    void transferEnded() override;
    void start(const QByteArray *postData);
    void setUp();
    bool prepare(bool post);
    bool setText(CURLoption option, const QByteArray &text);
    qsizetype receive(const char *bytes, qsizetype size);
    static std::size_t onBody(char *bytes, std::size_t size, std::size_t count, void *self) noexcept;

    const std::shared_ptr<CurlMulti> m_multi;
    const TextEncoder m_encode;
    CURL *const m_easy;
    const HeaderList m_headers;
    QByteArray m_postData; // libcurl sends from here
    ReceivedBody m_body;
    int m_state = Closed;
    int m_status = 0;
    bool m_started = false; // libcurl has seen the present transfer
};

CurlControl::CurlControl(std::shared_ptr<CurlMulti> multi, TextEncoder encode)
    : m_multi(std::move(multi)),
      m_encode(std::move(encode)),
      m_easy(m_multi->openHandle(*this)),
      m_headers(curl_slist_append(nullptr, "Expect:"))
{
    setUp();
}

CurlControl::~CurlControl()
{
    m_multi->closeHandle(m_easy, *this);
}

// What is the same for every transfer.
void CurlControl::setUp()
{
    curl_easy_setopt(m_easy, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(m_easy, CURLOPT_PROTOCOLS_STR, Schemes);
    curl_easy_setopt(m_easy, CURLOPT_REDIR_PROTOCOLS_STR, Schemes);
    curl_easy_setopt(m_easy, CURLOPT_DEFAULT_PROTOCOL, "http");
    curl_easy_setopt(m_easy, CURLOPT_MAXREDIRS, MostRedirects);
    curl_easy_setopt(m_easy, CURLOPT_ACCEPT_ENCODING, ""); // all that it knows
    curl_easy_setopt(m_easy, CURLOPT_COOKIEFILE, "");      // cookies on, none read
    curl_easy_setopt(m_easy, CURLOPT_HTTPHEADER, m_headers.get());
    // A user part of an address is not sent.
    curl_easy_setopt(m_easy, CURLOPT_HTTPAUTH, CURLAUTH_NONE);
    curl_easy_setopt(m_easy, CURLOPT_PROXYAUTH, CURLAUTH_BASIC);
    // Left alone libcurl asks the environment for both this and the proxy.
    curl_easy_setopt(m_easy, CURLOPT_NOPROXY, "");
    // Else taking a transfer back while the name of its host is being asked for waits for the answer: with a
    // name server out of reach the program would stand still for as long as the system keeps asking.
    curl_easy_setopt(m_easy, CURLOPT_QUICK_EXIT, 1L);
    // The time limit belongs to the caller; the longest one here stands for none.
    curl_easy_setopt(m_easy, CURLOPT_CONNECTTIMEOUT_MS, long{std::numeric_limits<int>::max()});
    curl_easy_setopt(m_easy, CURLOPT_BUFFERSIZE, ReceiveBuffer);
    curl_easy_setopt(m_easy, CURLOPT_WRITEFUNCTION, &CurlControl::onBody);
    curl_easy_setopt(m_easy, CURLOPT_WRITEDATA, this);
}

bool CurlControl::setText(CURLoption option, const QByteArray &text)
{
    return curl_easy_setopt(m_easy, option, text.isEmpty() ? nullptr : text.constData()) == CURLE_OK;
}

bool CurlControl::prepare(bool post)
{
    const bool credentials = !ProxyServer.isEmpty() && !ProxyUsername.isEmpty();
    curl_easy_setopt(m_easy, CURLOPT_FOLLOWLOCATION, FollowOption ? 1L : 0L);
    curl_easy_setopt(m_easy, CURLOPT_TIMEOUT_MS, static_cast<long>(Timeout));
    if (post) {
        curl_easy_setopt(m_easy, CURLOPT_POST, 1L);
        curl_easy_setopt(m_easy, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(m_postData.size()));
        curl_easy_setopt(m_easy, CURLOPT_POSTFIELDS, m_postData.constData());
    } else {
        curl_easy_setopt(m_easy, CURLOPT_HTTPGET, 1L);
    }
    // An empty proxy, unlike none, keeps libcurl from asking the environment.
    const QByteArray proxy = wireHeaderValue(ProxyServer, m_encode);
    const QByteArray address = wireAddress(Url, m_encode);
    return !address.isEmpty() && setText(CURLOPT_URL, address) &&
           setText(CURLOPT_USERAGENT, wireHeaderValue(UserAgent, m_encode)) &&
           curl_easy_setopt(m_easy, CURLOPT_PROXY, proxy.constData()) == CURLE_OK &&
           setText(CURLOPT_PROXYUSERNAME,
                   credentials ? wireHeaderValue(ProxyUsername, m_encode) : QByteArray()) &&
           setText(CURLOPT_PROXYPASSWORD,
                   credentials ? wireHeaderValue(ProxyPassword, m_encode) : QByteArray());
}

void CurlControl::start(const QByteArray *postData)
{
    if (Busy())
        throw Failure(u"A transfer is under way"_s);
    m_postData = postData ? *postData : QByteArray();
    m_body.clear();
    m_status = 0;
    m_state = Connecting;
    m_started = prepare(postData != nullptr);
    if (m_started)
        m_multi->start(m_easy);
    else
        m_multi->endLater(*this);
}

void CurlControl::Abort()
{
    if (m_state != Connecting)
        return;
    m_state = Closing;
    m_multi->stop(m_easy, *this);
}

void CurlControl::transferEnded()
{
    long status = 0;
    if (m_started)
        curl_easy_getinfo(m_easy, CURLINFO_RESPONSE_CODE, &status);
    m_status = static_cast<int>(status);
    m_postData = QByteArray();
    m_state = Closed;
    Q_EMIT stateChanged(); // the handler may have destroyed this
}

qsizetype CurlControl::receive(const char *bytes, qsizetype size)
{
    if (m_body.isEmpty()) {
        curl_off_t length = 0;
        curl_easy_getinfo(m_easy, CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &length);
        if (length > size && length <= LongestReserve)
            m_body.reserve(static_cast<qsizetype>(length));
    }
    // Taking less than is offered ends the transfer.
    const qsizetype taken = std::min(size, LongestBody - m_body.size());
    m_body.append({bytes, taken});
    return taken;
}

std::size_t CurlControl::onBody(char *bytes, std::size_t size, std::size_t count, void *self) noexcept
{
    try {
        const auto offered = static_cast<qsizetype>(size) * static_cast<qsizetype>(count);
        return static_cast<std::size_t>(static_cast<CurlControl *>(self)->receive(bytes, offered));
    } catch (const std::exception &) {
        return 0; // no memory: the page is what has arrived
    }
}

class CurlPool final : public HttpPool
{
public:
    explicit CurlPool(TextEncoder encode)
        : m_multi(std::make_shared<CurlMulti>()), m_encode(std::move(encode))
    {
    }

    std::unique_ptr<HttpControl> createControl() override
    {
        return std::make_unique<CurlControl>(m_multi, m_encode);
    }

private:
    const std::shared_ptr<CurlMulti> m_multi;
    const TextEncoder m_encode;
};

} // namespace

CurlTransport::CurlTransport(TextEncoder encode) : m_encode(std::move(encode))
{
    // A connection that the other side has closed is an error of its transfer, not the end of the program.
    std::signal(SIGPIPE, SIG_IGN);
}

std::unique_ptr<HttpPool> CurlTransport::createPool()
{
    needCurl();
    return std::make_unique<CurlPool>(m_encode);
}

} // namespace sondrel
