// Logins that prove a password, by the vectors of RFC 7677, RFC 4231 and FIPS 180.
#include "irc/protocol/base64.h"
#include "irc/protocol/sasl_lines.h"
#include "irc/protocol/scram.h"
#include "irc/protocol/sha256.h"

#include <gtest/gtest.h>

namespace larkspin {
namespace {

std::string hex(std::string_view bytes) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        text.append(1, digits[value >> 4]).append(1, digits[value & 15]);
    }
    return text;
}

TEST(Sha256, IsThatOfTheStandard) {
    EXPECT_EQ(hex(sha256("")), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(hex(sha256("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq")),
              "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
    EXPECT_EQ(hex(sha256(std::string(1'000'000, 'a'))),
              "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
    EXPECT_EQ(hex(HmacSha256("Jefe").of("what do ya want for nothing?")),
              "5bdcc146bf60754e6a042426089575c75a003f089d2739839dec58b964ec3843");
    EXPECT_EQ(hex(HmacSha256(std::string(131, '\xAA'))
                      .of("Test Using Larger Than Block-Size Key - Hash Key First")),
              "60e431591ee0b67f0d8a26aacbf5b77f8e0bc6213728c5140546040f0ee37f54");
}

TEST(Base64, ReadsWhatItWritesAndNothingElse) {
    for (const auto& [bytes, text] : {std::pair("", ""),
                                      {"f", "Zg=="},
                                      {"fo", "Zm8="},
                                      {"foo", "Zm9v"},
                                      {"\xFB\xFF\xFE"
                                       "f",
                                       "+//+Zg=="}}) {
        EXPECT_EQ(base64(bytes), text);
        EXPECT_EQ(fromBase64(text), bytes);
    }
    for (const char* const wrong : {"Z", "Zg", "Zg=", "Z===", "Zg==Zg==", "Z-9v", "Zm9v\n"})
        EXPECT_EQ(fromBase64(wrong), std::nullopt) << wrong;
}

TEST(SaslLines, ServersPiecesArePutTogether) {
    SaslInput input;
    EXPECT_FALSE(input.add(std::string(400, 'A')));
    EXPECT_TRUE(input.add("Zm9v"));
    EXPECT_EQ(input.message(), std::string(300, '\0') + "foo");
    EXPECT_TRUE(input.add("+"));
    EXPECT_EQ(input.message(), "");
    EXPECT_TRUE(input.add("Z"));
    EXPECT_EQ(input.message(), std::nullopt);
    for (int piece = 0; piece < 30; ++piece)
        EXPECT_FALSE(input.add(std::string(400, 'A')));
    EXPECT_TRUE(input.add("+"));
    EXPECT_EQ(input.message(), std::nullopt);
}

const std::string nonce = "rOprNGfwEbeRWgbNEkqO", both = nonce + "%hvYDpWUa2RaTCAfuxFIlj)hNlF$k0",
                  salt = "W22ZaJ0SNY7soEsUEjb6gQ==",
                  proof = "v=6rriTRBi23WpRR/wtup+mMhUZUn/dB5nLTJRsjl95G4=";

TEST(Scram, ProvesAPasswordAndHasTheServerProveIt) {
    ScramClient client("user", "pencil", nonce);
    EXPECT_FALSE(client.isProof(proof));
    EXPECT_EQ(client.first(), "n,,n=user,r=" + nonce);
    EXPECT_EQ(client.second("r=" + both + ",s=" + salt + ",i=4096"),
              "c=biws,r=" + both + ",p=dHzbZapWIk4jUhN+Ute9ytag9zjfMHgsqmmiz7AndVQ=");
    EXPECT_TRUE(client.isProof(proof));
    for (const char* const wrong :
         {"", "v=", "v=6rriTRBi23WpRR/wtup+mMhUZUn/dB5nLTJRsjl95G5=", "e=invalid-proof", "v=AAAA"})
        EXPECT_FALSE(client.isProof(wrong)) << wrong;
    EXPECT_EQ(ScramClient("a=b,c", "", "x").first(), "n,,n=a=3Db=2Cc,r=x");
}

TEST(Scram, MakesNothingOfAnswersThatAreNone) {
    for (const std::string& wrong :
         {std::string(), "r=" + nonce + ",s=" + salt + ",i=4096",
          "r=x" + both + ",s=" + salt + ",i=4096", "r=" + both + ",s=,i=4096",
          "r=" + both + ",s=!,i=4096", "r=" + both + ",s=" + salt + ",i=4095",
          "r=" + both + ",s=" + salt + ",i=500001", "r=" + both + ",s=" + salt,
          "m=x,r=" + both + ",s=" + salt + ",i=4096"})
        EXPECT_EQ(ScramClient("user", "pencil", nonce).second(wrong), std::nullopt) << wrong;
}

} // namespace
} // namespace larkspin
