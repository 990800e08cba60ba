#include "services/Digest.h"

#include <gtest/gtest.h>

#include <string>

namespace vrn::services {
namespace {

std::string hex(const Sha256& value) {
    std::string text;
    for (const std::uint8_t byte : value) {
        text += "0123456789abcdef"[byte >> 4];
        text += "0123456789abcdef"[byte & 15];
    }
    return text;
}

TEST(Digest, Sha256GivesThePublishedValues) {
    EXPECT_EQ(hex(sha256("abc")), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(hex(sha256({})), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(hex(sha256("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq")),
              "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
    EXPECT_EQ(hex(sha256(std::string(1000000, 'a'))),
              "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST(Digest, HmacGivesTheValuesOfRfc4231) {
    EXPECT_EQ(hex(hmacSha256(std::string(20, '\x0b'), "Hi There")),
              "b0344c61d8db38535ca8afceaf0bf12b881dc200c9833da726e9376c2e32cff7");
    EXPECT_EQ(hex(hmacSha256("Jefe", "what do ya want for nothing?")),
              "5bdcc146bf60754e6a042426089575c75a003f089d2739839dec58b964ec3843");
    EXPECT_EQ(hex(hmacSha256(std::string(20, '\xaa'), std::string(50, '\xdd'))),
              "773ea91e36800e46854db8ebd09181a72959098b3ef8c122d9635514ced565fe");
    EXPECT_EQ(hex(hmacSha256(std::string(131, '\xaa'), "Test Using Larger Than Block-Size Key - Hash Key First")),
              "60e431591ee0b67f0d8a26aacbf5b77f8e0bc6213728c5140546040f0ee37f54");
    // The empty key, also as a view without an address.
    EXPECT_EQ(hex(hmacSha256({}, {})), "b613679a0814d9ec772f95d778c35fc5ff1697c493715653c6c712144292c5ad");
}

TEST(Digest, Base64IsReadOnlyInTheOneFormThatIsWritten) {
    const Sha256 value = sha256("abc");
    const std::string text = "ungWv48Bz+pBQUDeXa4iI7ADYaOWF3qctBD/YfIAFa0=";
    EXPECT_EQ(base64(value), text);
    EXPECT_EQ(fromBase64(text), value);
    EXPECT_EQ(fromBase64("\r\n  " + text.substr(0, 20) + " \t" + text.substr(20) + "\n"), value);

    for (const std::string& bad : {
             std::string(),
             std::string("="),
             text.substr(0, 43),
             text.substr(0, 40),
             text + "=",
             text + "AAAA",
             text.substr(0, 42) + "==",  // one byte short
             text.substr(0, 43) + "A",   // one byte long
             text.substr(0, 42) + "1=",  // bits beyond the last byte
             "=" + text.substr(1),
             text.substr(0, 8) + "====" + text.substr(12),
             text.substr(0, 8) + "-_" + text.substr(10),
             text.substr(0, 8) + "\xc3\xa9" + text.substr(10),
             text.substr(0, 8) + std::string(1, '\0') + text.substr(9),
             text.substr(0, 43) + "-",
         }) {
        EXPECT_EQ(fromBase64(bad), std::nullopt) << bad;
    }
}

TEST(Digest, ComparesEveryByte) {
    const Sha256 value = sha256("abc");
    EXPECT_TRUE(equalInConstantTime(value, sha256("abc")));
    for (std::size_t i = 0; i < value.size(); ++i) {
        Sha256 other = value;
        other[i] ^= 1;
        EXPECT_FALSE(equalInConstantTime(value, other)) << i;
    }
}

}  // namespace
}  // namespace vrn::services
