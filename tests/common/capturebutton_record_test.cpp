// The capture-button record in its lite-variant form.
#include <cstdint>
#include <string>
#include <vector>

#include "zx/capturebutton.h"
#include "zx/status.h"
#include "record_compare.h"
#include "zx_test.h"
#include "zxhost/litevariant.h"

namespace {

std::vector<uint8_t> Saved(const SZxCaptureButtonSetup_Param& p)
{
    CZxLiteVariantW w;
    EXPECT_EQ(SZxCaptureButtonSetup_Param::SaveToLiteVariant(p, w), ZX_OK);
    return w.GetBytes();
}

} // namespace

TEST(CaptureButtonRecord, SavedKeysInOrderAndRecordsRoundTrip)
{
    const SZxCaptureButtonSetup_Param records[] = {
        SZxCaptureButtonSetup_Param(),
        SZxCaptureButtonSetup_Param(-2, true, L"SIM-C2048-0002", true, L"DAPI", L"", true, false),
        SZxCaptureButtonSetup_Param(2, false, std::wstring(63, L'c').c_str(), false, L"",
                                    std::wstring(255, L'o').c_str(), false, true),
    };
    for (const auto& rec : records) {
        const std::vector<uint8_t> bytes = Saved(rec);
        CZxLiteVariantR r(bytes.data(), bytes.size());
        SZxCaptureButtonSetup_Param back(0, true, L"old", true, L"old", L"old", true, true);
        ASSERT_EQ(SZxCaptureButtonSetup_Param::LoadFromLiteVariant(back, r), ZX_OK);
        EXPECT_TRUE(SameRecord(back, rec)) << rec.m_iPerformCapture;
    }
    const std::vector<uint8_t> bytes = Saved(records[1]);
    CZxLiteVariantR r(bytes.data(), bytes.size());
    ASSERT_EQ(r.LevelBegin(L"SZxCaptureButtonSetup_Param"), 0);
    std::vector<std::wstring> keys;
    for (int i = 0; i < r.GetKeyCount(); ++i)
        keys.push_back(r.GetKeyAt(i).GetString());
    EXPECT_EQ(keys, (std::vector<std::wstring>{L"m_bConfirmationSound", L"m_bRestoreDeviceAfterCapture",
                                               L"m_bUseSpecifiedCamera", L"m_bUseSpecifiedOC", L"m_iPerformCapture",
                                               L"m_wszSpecifiedCamera", L"m_wszSpecifiedOC_Camera1",
                                               L"m_wszSpecifiedOC_Camera2"}));
}

TEST(CaptureButtonRecord, LoadDefaultsCutsOverlongNamesAndLeavesTheRecordWithoutTheLevel)
{
    // An older record: only some keys, names longer than the fields.
    CZxLiteVariantW w;
    w.LevelBegin(L"SZxCaptureButtonSetup_Param");
    w.Set(true, L"m_bUseSpecifiedOC");
    w.Set(std::wstring(64, L'c').c_str(), L"m_wszSpecifiedCamera");
    w.Set(std::wstring(300, L'o').c_str(), L"m_wszSpecifiedOC_Camera2");
    w.LevelEnd();
    const std::vector<uint8_t> bytes = w.GetBytes();
    CZxLiteVariantR r(bytes.data(), bytes.size());
    SZxCaptureButtonSetup_Param p(-2, true, L"x", false, L"y", L"z", true, true);
    ASSERT_EQ(SZxCaptureButtonSetup_Param::LoadFromLiteVariant(p, r), ZX_OK);
    const SZxCaptureButtonSetup_Param expected(1, false, std::wstring(63, L'c').c_str(), true, L"",
                                               std::wstring(255, L'o').c_str(), false, false);
    EXPECT_TRUE(SameRecord(p, expected));

    // No level of that name: -9, record untouched; the writer's level failing is -9 too.
    CZxLiteVariantW other;
    other.LevelBegin(L"Other");
    other.LevelEnd();
    const std::vector<uint8_t> otherBytes = other.GetBytes();
    CZxLiteVariantR r2(otherBytes.data(), otherBytes.size());
    const SZxCaptureButtonSetup_Param before = p;
    EXPECT_EQ(SZxCaptureButtonSetup_Param::LoadFromLiteVariant(p, r2), ZX_E_FAIL);
    CZxLiteVariantR empty;
    EXPECT_EQ(SZxCaptureButtonSetup_Param::LoadFromLiteVariant(p, empty), ZX_E_FAIL);
    EXPECT_TRUE(SameRecord(p, before));
}
