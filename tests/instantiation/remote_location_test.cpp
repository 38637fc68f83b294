// Only "tarvo://host:port" is the text of a remote location.
#include "core/link_error.h"
#include "instantiation/remote_location.h"

#include <gtest/gtest.h>

namespace {

TEST(RemoteLocation, IsASchemeAHostAndAPort) {
    const struct {
        std::u16string_view text;
        std::u16string_view host; // empty: refused
        std::int32_t port;
    } cases[] = {
        {u"tarvo://host:80", u"host", 80},
        {u"tarvo://10.0.0.7:0", u"10.0.0.7", 0},
        {u"tarvo://a b\n\u00e4:00012", u"a b\n\u00e4", 12},
        {u"tarvo://h:2147483647", u"h", 2147483647},
        {u"tarvo://h:99999999999999999999", u"h", 2147483647},
        {u"", u"", 0},
        {u"tarvo:", u"", 0},
        {u"tarvo://", u"", 0},
        {u"tarvo://host", u"", 0},
        {u"tarvo://host:", u"", 0},
        {u"tarvo://host:80/", u"", 0},
        {u"tarvo://host/80", u"", 0},
        {u"tarvo://host:80/path", u"", 0},
        {u"tarvo://host:80 ", u"", 0},
        {u"tarvo://host:-1", u"", 0},
        {u"tarvo://host:\u0661", u"", 0},
        {u"tarvo://:80", u"", 0},
        {u"tarvo://ho^st:80", u"", 0},
        {u"tarvo://::1:80", u"", 0},
        {u"tarvo:/host:80", u"", 0},
        {u"Tarvo://host:80", u"", 0},
        {u"tarvos://host:80", u"", 0},
        {u" tarvo://host:80", u"", 0},
    };
    for (const auto& [text, host, port] : cases) {
        try {
            const TARVO::RemoteLocation location = TARVO::parseRemoteLocation(text);
            EXPECT_EQ(location.host, host);
            EXPECT_EQ(location.port, port);
        } catch (const TARVO::vask_link_error& error) {
            EXPECT_EQ(host, u"");
            EXPECT_EQ(error.code(), TarvoResult{RC_BAD_LOCATION});
        }
    }
}

} // namespace
