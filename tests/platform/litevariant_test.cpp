// Lite variants: nested levels of typed keys that survive the byte form, and a
// reader that refuses damaged bytes as a whole.
#include <cstdint>
#include <string>
#include <vector>

#include "zx_test.h"
#include "zxhost/litevariant.h"

namespace {

std::vector<uint8_t> Sample()
{
    CZxLiteVariantW w;
    w.Set(7, L"top");
    w.LevelBegin(L"outer");
    w.Set(true, L"flag");
    w.Set(-123456, L"count");
    w.Set(L"Kamera \u00e9\u4e2d\U0001F4F7", L"name");
    w.LevelBegin(L"inner");
    w.Set(L"", L"empty");
    w.LevelEnd();
    w.Set(false, L"after");
    w.LevelEnd();
    return w.GetBytes();
}

} // namespace

TEST(LiteVariant, LevelsAndTypedKeysRoundTrip)
{
    const std::vector<uint8_t> bytes = Sample();
    CZxLiteVariantR r(bytes.data(), bytes.size());
    ASSERT_TRUE(r.IsLoaded());
    EXPECT_EQ(r.Get(L"top", 0), 7);
    EXPECT_NE(r.LevelBegin(L"inner"), 0);   // only below "outer"
    ASSERT_EQ(r.LevelBegin(L"outer"), 0);
    EXPECT_TRUE(r.Get(L"flag", false));
    EXPECT_EQ(r.Get(L"count", 0), -123456);
    EXPECT_STREQ(r.Get(L"name", L"-").GetString(), L"Kamera \u00e9\u4e2d\U0001F4F7");
    EXPECT_FALSE(r.Get(L"after", true));
    // Missing keys and keys of another type give the default.
    EXPECT_EQ(r.Get(L"flag", 5), 5);
    EXPECT_STREQ(r.Get(L"count", L"dflt").GetString(), L"dflt");
    EXPECT_TRUE(r.Get(L"nothing", true));
    EXPECT_EQ(r.Get(L"top", 3), 3);   // belongs to the level above
    ASSERT_EQ(r.GetKeyCount(), 4);
    EXPECT_STREQ(r.GetKeyAt(3).GetString(), L"after");
    ASSERT_EQ(r.LevelBegin(L"inner"), 0);
    EXPECT_STREQ(r.Get(L"empty", L"x").GetString(), L"");
    EXPECT_EQ(r.LevelEnd(), 0);
    EXPECT_EQ(r.LevelEnd(), 0);
    EXPECT_NE(r.LevelEnd(), 0);
    EXPECT_EQ(r.Get(L"top", 0), 7);
}

TEST(LiteVariant, WriterRefusesBadKeysAndUnbalancedLevels)
{
    CZxLiteVariantW w;
    EXPECT_NE(w.LevelEnd(), 0);
    EXPECT_NE(w.LevelBegin(nullptr), 0);
    EXPECT_NE(w.Set(true, L""), 0);
    EXPECT_NE(w.Set(1, std::wstring(CZxLiteVariantW::MAX_KEY_UNITS + 1, L'k').c_str()), 0);
    ASSERT_EQ(w.LevelBegin(L"open"), 0);
    EXPECT_TRUE(w.GetBytes().empty());
    EXPECT_EQ(w.Set(static_cast<const wchar_t*>(nullptr), L"null text"), 0);
    EXPECT_EQ(w.LevelEnd(), 0);
    const std::vector<uint8_t> bytes = w.GetBytes();
    CZxLiteVariantR r(bytes.data(), bytes.size());
    ASSERT_EQ(r.LevelBegin(L"open"), 0);
    EXPECT_EQ(r.GetKeyCount(), 1);   // the refused writes left nothing behind
    EXPECT_STREQ(r.Get(L"null text", L"x").GetString(), L"");
}

TEST(LiteVariant, ReaderRefusesEveryTruncationAndEveryFlippedByte)
{
    const std::vector<uint8_t> good = Sample();
    CZxLiteVariantR r;
    for (size_t n = 0; n < good.size(); ++n) {
        // A copy of exactly n bytes, so any read past it is an overrun the sanitiser sees.
        std::vector<uint8_t> cut(good.begin(), good.begin() + static_cast<long>(n));
        EXPECT_NE(r.Load(cut.data(), cut.size()), 0) << "truncated to " << n;
        EXPECT_NE(r.LevelBegin(L"outer"), 0);
        std::vector<uint8_t> bad = good;
        bad[n] ^= 0x20;
        EXPECT_NE(r.Load(bad.data(), bad.size()), 0) << "byte " << n << " changed";
    }
    EXPECT_NE(r.Load(nullptr, 40), 0);
    EXPECT_EQ(r.Load(good.data(), good.size()), 0);
}
