// The host's base64 encoder.
#include <QByteArray>
#include <random>

#include "base64_encoder.h"
#include "host_test_support.h"

namespace pdfhost::testing {
namespace {

std::string Encode(char padding, const std::string& bytes) {
    std::string out = "left over";
    Base64Encoder(padding).EncodeInto(bytes.data(), bytes.size(), out);
    return out;
}

// Without padding a short tail ends the text; any padding character may be asked for.
TEST(Base64Encoder, PaddingIsLeftOutOrTheCharacterAsked) {
    EXPECT_EQ(Encode(0, "f"), "Zg");
    EXPECT_EQ(Encode(0, "fo"), "Zm8");
    EXPECT_EQ(Encode(0, "foo"), "Zm9v");
    EXPECT_EQ(Encode('.', "f"), "Zg..");
    EXPECT_EQ(Encode('=', ""), "");
}

TEST(Base64Encoder, EveryByteValueAndLengthMatchesAnIndependentEncoder) {
    std::mt19937 random(7);
    for (std::size_t length : {1u, 2u, 3u, 255u, 256u, 257u, 65537u}) {
        std::string bytes(length, '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(random());
        const QByteArray expected =
            QByteArray(bytes.data(), static_cast<qsizetype>(length)).toBase64();
        EXPECT_EQ(Encode('=', bytes), expected.toStdString()) << length;
    }
}

class Base64TablesTest : public HostFixture {};

TEST_F(Base64TablesTest, EncodingReplacesTheByteString) {
    const HostBase64Encoder encoder = Call<HostBase64EncoderNew>('=');
    ASSERT_NE(encoder, nullptr);
    const HostByteString out = Call<HostByteStringNew>();
    Call<HostByteStringSet>(out, "old text");
    const std::string data("PDF\x00\xff bytes", 11);
    Call<HostBase64Encode>(encoder, data.data(), static_cast<int64_t>(data.size()), out);
    EXPECT_EQ(ByteText(out), QByteArray(data.data(), 11).toBase64().toStdString());
    Call<HostBase64Encode>(encoder, data.data(), 0, out);
    EXPECT_EQ(ByteText(out), "");
    Call<HostBase64Encode>(encoder, data.data(), -5, out);
    EXPECT_EQ(ByteText(out), "");
    Call<HostBase64EncoderDestroy>(encoder);
    Call<HostByteStringSet>(out, "kept");
    Call<HostBase64Encode>(encoder, data.data(), 3, out);
    EXPECT_EQ(ByteText(out), "kept") << "a destroyed encoder encodes nothing";
    Call<HostByteStringDelete>(out);
}

}  // namespace
}  // namespace pdfhost::testing
