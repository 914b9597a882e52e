#include "zx_test.h"

#include <algorithm>
#include <mutex>
#include <string>
#include <vector>
#include "zxhost/system.h"

namespace zxtest {
namespace {

struct DiagRecord {
    std::wstring condition;
    std::wstring source;
    int line;
};

std::mutex g_mutex;
std::vector<DiagRecord> g_claimed;
std::vector<DiagRecord> g_unclaimed;
int g_captureDepth = 0;

void Sink(const wchar_t* condition, const wchar_t*, int, const wchar_t* file, int line)
{
    std::lock_guard<std::mutex> lock(g_mutex);
    DiagRecord r{condition ? condition : L"", file ? file : L"", line};
    (g_captureDepth > 0 ? g_claimed : g_unclaimed).push_back(r);
}

// Fails the running test when an assertion was raised outside any DiagCapture.
class UnclaimedAssertionCheck : public ::testing::EmptyTestEventListener {
    void OnTestStart(const ::testing::TestInfo&) override
    {
        std::lock_guard<std::mutex> lock(g_mutex);
        g_unclaimed.clear();
    }
    void OnTestEnd(const ::testing::TestInfo&) override
    {
        std::vector<DiagRecord> left;
        {
            std::lock_guard<std::mutex> lock(g_mutex);
            left.swap(g_unclaimed);
        }
        for (const DiagRecord& r : left)
            ADD_FAILURE() << "unexpected diagnostic assertion \"" << r.condition << "\" from " << r.source << ":"
                          << r.line;
    }
};

} // namespace

DiagCapture::DiagCapture()
{
    std::lock_guard<std::mutex> lock(g_mutex);
    if (g_captureDepth++ == 0)
        g_claimed.clear();
}

DiagCapture::~DiagCapture()
{
    std::lock_guard<std::mutex> lock(g_mutex);
    --g_captureDepth;
}

size_t DiagCapture::Size() const { return g_claimed.size(); }

int DiagCapture::Count(const wchar_t* condition) const
{
    return int(std::count_if(g_claimed.begin(), g_claimed.end(),
                             [&](const DiagRecord& r) { return r.condition == condition; }));
}

bool DiagCapture::Has(const wchar_t* condition, const wchar_t* source) const
{
    return std::any_of(g_claimed.begin(), g_claimed.end(),
                       [&](const DiagRecord& r) { return r.condition == condition && r.source == source; });
}

} // namespace zxtest

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    ZX_SetDiagSink(&zxtest::Sink);
    ::testing::UnitTest::GetInstance()->listeners().Append(new zxtest::UnclaimedAssertionCheck);
    return RUN_ALL_TESTS();
}
