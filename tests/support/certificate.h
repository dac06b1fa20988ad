// A server's certificate, made on the spot, that vouches for itself.
#pragma once

#include "support/child.h"
#include "support/temp_directory.h"

#include <gtest/gtest.h>

namespace larkspin {

class Certificate {
public:
    // For a name ("DNS:irc.test") or an address ("IP:127.0.0.1"); of a day, which may be over.
    explicit Certificate(const std::string& owner, bool expired = false) {
        run({"req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes",
             "-days", "1", "-subj", "/CN=larkspin's tests", "-addext", "subjectAltName=" + owner,
             "-keyout", key(), "-out", file()});
        if (expired)
            run({"x509", "-in", file(), "-signkey", key(), "-days", "-1", "-out", file()});
    }

    std::string file() const { return disk_.path() / "certificate"; }
    std::string key() const { return disk_.path() / "key"; }

private:
    static void run(const std::vector<std::string>& arguments) {
        const auto openssl = Child::start("openssl", {}, arguments);
        EXPECT_EQ(openssl->ends(std::chrono::seconds(20)), 0) << openssl->rest({});
    }

    const TempDirectory disk_;
};

} // namespace larkspin
