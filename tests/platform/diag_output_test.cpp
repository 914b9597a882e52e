// The default diagnostics and log sinks: where a plug-in's developer sees them.
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>
#ifdef _WIN32
#include <process.h>
#include <windows.h>
#else
#include <unistd.h>
#endif

#include "zx_test.h"
#include "zxhost/system.h"

namespace {

void SetLogFileVariable(const char* path) // null clears it
{
#ifdef _WIN32
    SetEnvironmentVariableA("ZX_LOG_FILE", path);
#else
    path ? setenv("ZX_LOG_FILE", path, 1) : unsetenv("ZX_LOG_FILE");
#endif
}

#ifdef _WIN32
// What a debug-output viewer does: it owns the shared buffer that
// OutputDebugString writes into when no debugger is attached, and collects
// every text sent by this process until Stop.
class DebugOutputListener {
public:
    HANDLE m_bufferReady = CreateEventW(nullptr, FALSE, FALSE, L"DBWIN_BUFFER_READY");
    HANDLE m_dataReady = CreateEventW(nullptr, FALSE, FALSE, L"DBWIN_DATA_READY");
    HANDLE m_mapping = CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, 4096, L"DBWIN_BUFFER");
    const char* m_view = static_cast<const char*>(MapViewOfFile(m_mapping, FILE_MAP_READ, 0, 0, 4096));
    std::atomic<bool> m_stop{false};
    std::string m_text;
    std::thread m_thread{[this] {
        for (SetEvent(m_bufferReady); !m_stop;) {
            if (WaitForSingleObject(m_dataReady, 50) != WAIT_OBJECT_0)
                continue;
            DWORD pid;
            std::memcpy(&pid, m_view, sizeof(pid));
            if (pid == GetCurrentProcessId())
                m_text += std::string(m_view + sizeof(DWORD), strnlen(m_view + sizeof(DWORD), 4096 - sizeof(DWORD)));
            SetEvent(m_bufferReady);
        }
    }};

    ~DebugOutputListener()
    {
        Stop();
        UnmapViewOfFile(m_view);
        for (HANDLE h : {m_mapping, m_bufferReady, m_dataReady})
            CloseHandle(h);
    }
    std::string Stop()
    {
        m_stop = true;
        if (m_thread.joinable())
            m_thread.join();
        return m_text;
    }
};
#endif

} // namespace

// Both default sinks write one line each to the file ZX_LOG_FILE names (in
// UTF-8, appended, read at every line) and, on Windows, to the debugger; the
// log keeps its detail level; a cleared variable stops the file.
TEST(DiagOutput, DefaultSinksWriteTheLogFileAndTheDebugOutput)
{
    const std::string path = ::testing::TempDir() + "zx_diag_" + std::to_string(getpid()) + ".log";
    std::ofstream(path, std::ios::binary) << "earlier line\n";
#ifdef _WIN32
    DebugOutputListener listener;
    ASSERT_TRUE(listener.m_view && listener.m_bufferReady && listener.m_dataReady);
#endif
    const PFN_ZxDiagSink testSink = ZX_SetDiagSink(nullptr);
    const PFN_ZxLogSink oldLog = ZX_SetLogSink(nullptr);
    const int oldDetail = ZX_GetLogDetail();
    ZX_SetLogDetail(1);
    SetLogFileVariable(path.c_str());
    DiagAssertW(L"pPicBuf->uiComp!=1", L"", 0, L"common", 42);
    ZX_LogW(1, L"camera %s: frame %d late", L"Gr\u00fcn \u6f22", 7);
    ZX_LogW(2, L"too detailed for level 1");
    SetLogFileVariable(nullptr);
    DiagAssertW(L"after", L"", 0, L"common", 1);
    ZX_SetLogDetail(oldDetail);
    ZX_SetLogSink(oldLog);
    ZX_SetDiagSink(testSink);

    std::stringstream file;
    file << std::ifstream(path, std::ios::binary).rdbuf();
    std::remove(path.c_str());
    EXPECT_EQ(file.str(), "earlier line\nassertion: pPicBuf->uiComp!=1 () in common:42\n"
                          "log[1]: camera Gr\xc3\xbc" "n \xe6\xbc\xa2: frame 7 late\n");
#ifdef _WIN32
    // The debugger receives the lines in the system's code page: the non-ASCII
    // characters are not compared.
    const std::string debug = listener.Stop();
    EXPECT_NE(debug.find("assertion: pPicBuf->uiComp!=1 () in common:42\n"), std::string::npos) << debug;
    EXPECT_NE(debug.find(": frame 7 late\n"), std::string::npos) << debug;
    EXPECT_NE(debug.find("assertion: after () in common:1\n"), std::string::npos) << debug;
    EXPECT_EQ(debug.find("too detailed"), std::string::npos) << debug;
#endif
}
