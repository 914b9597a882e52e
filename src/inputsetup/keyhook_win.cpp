// The free-entry combos' thread keyboard hooks, one per class: installed while a
// control of the class is attached, they offer Enter and Escape to each attached
// control in turn, and the first that takes the key swallows it.
#include <windows.h>

#include "zx/iscontrols_freecombo.h"
#include "zxhost/system.h"

struct SZxFreeComboLock {
    CRITICAL_SECTION cs;
};

CZxVector<CZxISControlComboFreeExposure*>* CZxISControlComboFreeExposure::m_ControlList = nullptr;
SZxFreeComboLock* CZxISControlComboFreeExposure::m_ControlLock = nullptr;
void* CZxISControlComboFreeExposure::m_KeyboardHook = nullptr;
CZxVector<CZxISControlComboFreeTemperature*>* CZxISControlComboFreeTemperature::m_ControlList = nullptr;
SZxFreeComboLock* CZxISControlComboFreeTemperature::m_ControlLock = nullptr;
void* CZxISControlComboFreeTemperature::m_KeyboardHook = nullptr;

namespace {

const wchar_t kSource[] = L"inputsetupcontrols";

class Guard {
public:
    explicit Guard(SZxFreeComboLock* lock) : m_lock(lock) { EnterCriticalSection(&m_lock->cs); }
    ~Guard() { LeaveCriticalSection(&m_lock->cs); }
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;

private:
    SZxFreeComboLock* m_lock;
};

// ---- Class-wide state, shared by both classes through their own statics ----

template <class T>
void InitClass(CZxVector<T*>*& list, SZxFreeComboLock*& lock)
{
    if (lock)
        return;
    lock = new SZxFreeComboLock;
    InitializeCriticalSection(&lock->cs);
    list = new CZxVector<T*>;
}

template <class T>
void DoneClass(CZxVector<T*>*& list, SZxFreeComboLock*& lock, void*& hook)
{
    if (!lock)
        return;
    if (hook)
        UnhookWindowsHookEx(static_cast<HHOOK>(hook));
    hook = nullptr;
    delete list;
    list = nullptr;
    DeleteCriticalSection(&lock->cs);
    delete lock;
    lock = nullptr;
}

template <class T>
bool RegisterIn(T* control, CZxVector<T*>* list, SZxFreeComboLock* lock, void*& hook, HOOKPROC proc)
{
    if (ZX_DIAG_FAIL_IF(!control || !list, kSource))
        return false;
    Guard g(lock);
    for (T* c : *list)
        if (c == control)
            return true;
    list->Add(control);
    if (list->GetSize() == 1)
        hook = SetWindowsHookExW(WH_KEYBOARD, proc, nullptr, GetCurrentThreadId());
    return true;
}

template <class T>
bool UnregisterFrom(T* control, CZxVector<T*>* list, SZxFreeComboLock* lock, void*& hook)
{
    if (!control || !list)
        return false;
    Guard g(lock);
    for (int i = 0; i < list->GetSize(); ++i)
        if ((*list)[i] == control) {
            list->RemoveAt(i);
            if (list->IsEmpty()) {
                UnhookWindowsHookEx(static_cast<HHOOK>(hook));
                hook = nullptr;
            }
            return true;
        }
    return false;
}

// Asks each registered control in order, under the lock; the first that takes
// the key swallows it.
template <class T, class Ask>
LRESULT WalkHook(int code, WPARAM wParam, LPARAM lParam, CZxVector<T*>* list, SZxFreeComboLock* lock, void* hook,
                 Ask ask)
{
    if (code >= 0 && list) {
        bool taken = false;
        {
            Guard g(lock);
            // By index, re-reading the size: a control's commit may change the list.
            for (int i = 0; !taken && i < list->GetSize(); ++i)
                taken = ask((*list)[i]);
        }
        if (taken)
            return 1;
    }
    return CallNextHookEx(static_cast<HHOOK>(hook), code, wParam, lParam);
}

// Both classes are used from the library's load to its unload.
struct ClassLifetime {
    ClassLifetime()
    {
        CZxISControlComboFreeExposure::Init();
        CZxISControlComboFreeTemperature::Init();
    }
    ~ClassLifetime()
    {
        CZxISControlComboFreeExposure::Done();
        CZxISControlComboFreeTemperature::Done();
    }
} s_lifetime;

LRESULT CALLBACK ExposureHookTrampoline(int code, WPARAM wParam, LPARAM lParam)
{
    return CZxISControlComboFreeExposure::FreeExposureHookProc(code, wParam, lParam);
}

LRESULT CALLBACK TemperatureHookTrampoline(int code, WPARAM wParam, LPARAM lParam)
{
    return CZxISControlComboFreeTemperature::FreeTemperatureHookProc(code, wParam, lParam);
}

} // namespace

void CZxISControlComboFreeExposure::Init() { InitClass(m_ControlList, m_ControlLock); }
void CZxISControlComboFreeExposure::Done() { DoneClass(m_ControlList, m_ControlLock, m_KeyboardHook); }

bool CZxISControlComboFreeExposure::RegisterControl(CZxISControlComboFreeExposure* control)
{
    return RegisterIn(control, m_ControlList, m_ControlLock, m_KeyboardHook, ExposureHookTrampoline);
}

bool CZxISControlComboFreeExposure::UnregisterControl(CZxISControlComboFreeExposure* control)
{
    return UnregisterFrom(control, m_ControlList, m_ControlLock, m_KeyboardHook);
}

ZxLResult CZxISControlComboFreeExposure::FreeExposureHookProc(int32_t code, ZxWParam wParam, ZxLParam lParam)
{
    return WalkHook(code, wParam, lParam, m_ControlList, m_ControlLock, m_KeyboardHook,
                    [&](CZxISControlComboFreeExposure* c) { return c->FreeExposureHook(code, wParam, lParam); });
}

void CZxISControlComboFreeTemperature::Init() { InitClass(m_ControlList, m_ControlLock); }
void CZxISControlComboFreeTemperature::Done() { DoneClass(m_ControlList, m_ControlLock, m_KeyboardHook); }

bool CZxISControlComboFreeTemperature::RegisterControl(CZxISControlComboFreeTemperature* control)
{
    return RegisterIn(control, m_ControlList, m_ControlLock, m_KeyboardHook, TemperatureHookTrampoline);
}

bool CZxISControlComboFreeTemperature::UnregisterControl(CZxISControlComboFreeTemperature* control)
{
    return UnregisterFrom(control, m_ControlList, m_ControlLock, m_KeyboardHook);
}

ZxLResult CZxISControlComboFreeTemperature::FreeTemperatureHookProc(int32_t code, ZxWParam wParam, ZxLParam lParam)
{
    return WalkHook(code, wParam, lParam, m_ControlList, m_ControlLock, m_KeyboardHook,
                    [&](CZxISControlComboFreeTemperature* c) { return c->FreeTemperatureHook(code, wParam, lParam); });
}
