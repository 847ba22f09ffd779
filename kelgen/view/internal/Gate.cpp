// Gate.cpp: host, origin, key and cookie.
#include <kelgen/view/internal/Gate.h>

#include <algorithm>
#include <string_view>

namespace kelgen::view::detail {

namespace {

/// In the same time wherever they differ.
bool IsEqual(std::string_view left, std::string_view right)
{
    unsigned difference = left.size() != right.size();
    for (std::size_t i = 0; i < left.size() && i < right.size(); ++i)
        difference |= static_cast<unsigned char>(left[i]) ^ static_cast<unsigned char>(right[i]);
    return difference == 0;
}

/// The value of @p name in pairs "a=1; b=2".
std::string_view ValueOf(std::string_view pairs, std::string_view name, char separator)
{
    while (!pairs.empty()) {
        const std::size_t end = std::min(pairs.find(separator), pairs.size());
        std::string_view pair = pairs.substr(0, end);
        pair.remove_prefix(std::min(pair.find_first_not_of(' '), pair.size()));
        if (pair.size() > name.size() && pair.starts_with(name) && pair[name.size()] == '=')
            return pair.substr(name.size() + 1);
        pairs.remove_prefix(std::min(end + 1, pairs.size()));
    }
    return {};
}

}  // namespace

Gate::Gate(std::string key, int port)
    : m_key(std::move(key)), m_port(port ? std::to_string(port) : ""), m_name("kelgen-view-" + (port ? m_port : m_key.substr(0, 8)))
{}

bool Gate::IsOwnHost(const std::string& host) const
{
    const std::size_t colon = std::min(host.find(':'), host.size());
    const std::string_view name = std::string_view(host).substr(0, colon);
    const std::string_view port = std::string_view(host).substr(std::min(colon + 1, host.size()));
    if (name != "127.0.0.1" && name != "localhost")
        return false;
    return m_port.empty() ? port.find_first_not_of("0123456789") == port.npos : port == m_port;
}

EPass Gate::Judge(const http::Request& request) const
{
    if (m_key.empty() || !IsOwnHost(request.host))
        return EPass::none;
    if (!request.origin.empty() && request.origin != "http://" + request.host)
        return EPass::none;
    if (request.method != "GET" && request.origin.empty())
        return EPass::none;
    if (IsEqual(ValueOf(request.cookie, m_name, ';'), m_key)) {
        const bool isOwn = request.site.empty() || request.site == "same-origin" || request.site == "none";
        return isOwn ? EPass::byCookie : EPass::none;
    }
    const bool isPage = request.method == "GET" && request.path == "/";
    return isPage && IsEqual(ValueOf(request.query, "key", '&'), m_key) ? EPass::byKey : EPass::none;
}

std::string Gate::Cookie() const
{
    return m_name + '=' + m_key + "; Path=/; HttpOnly; SameSite=Strict";
}

std::string Gate::Url() const
{
    return (m_port.empty() ? "http://localhost" : "http://127.0.0.1:" + m_port) + "/?key=" + m_key;
}

}  // namespace kelgen::view::detail
