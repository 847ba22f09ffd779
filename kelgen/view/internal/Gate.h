// Gate.h: who may see the desktop: whoever knows the key, from a page of this server alone.
#pragma once

#include <kelgen/view/Export.h>
#include <kelgen/view/http/Service.h>

#include <string>

namespace kelgen::view::detail {

enum class EPass
{
    none,
    byCookie,
    byKey,  ///< The key stands in the URL: the answer sets the cookie.
};

class KELGEN_VIEW_TESTED_API Gate
{
public:
    /// @p port is the server's; 0 for one on a Unix socket, which browsers reach by a port of somebody else's.
    Gate(std::string key, int port);

    /// Whether the request may pass. It may not when its host is another name than the loopback's with our port (a name that somebody else
    /// resolves here), when another site's page asks, or without the key.
    EPass Judge(const http::Request& request) const;
    /// The Set-Cookie header for whoever came by the key.
    std::string Cookie() const;
    /// The address of the page, without a port if the server has none.
    std::string Url() const;

private:
    bool IsOwnHost(const std::string& host) const;

    std::string m_key;
    std::string m_port;
    std::string m_name;  // of the cookie: several programs have one each
};

}  // namespace kelgen::view::detail
