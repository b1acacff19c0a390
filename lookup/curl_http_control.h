// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/http_control.h"
#include "lookup/wire_address.h"

namespace sondrel {

/// The real transport: libcurl on the Qt event loop, without threads of its own. A pool has at most ten
/// controls (the eleventh throws Failure) and keeps connections and cookies, both in memory, for as long as
/// it lives. Proxy variables of the environment have no say. A body ends at 32 MiB.
class CurlTransport final : public HttpTransport
{
public:
    /// encode gives the bytes, in the system code page, of an address, a header value or a password. It is
    /// asked when a transfer starts, and only for texts with characters above 127.
    explicit CurlTransport(TextEncoder encode);

    std::unique_ptr<HttpPool> createPool() override;

private:
    TextEncoder m_encode;
};

} // namespace sondrel
