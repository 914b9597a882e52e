#include <algorithm>
#include <cstdint>
#include <map>
#include <vector>
#include "zx/iscontrolbase.h"
#include "zx/status.h"

// Message numbers routed to the controls; the system headers are not available here.
namespace {
const uint32_t kWmCommand = 0x0111;
const uint32_t kWmHScroll = 0x0114;
const uint32_t kWmVScroll = 0x0115;
const uint32_t kWmCtlColorStatic = 0x0138;
const uint32_t kWmUser = 0x0400;

bool InGroup(const CZxISControl* c, uint32_t mask) { return (c->GetGroupMask() & mask) != 0; }
uint64_t HandleKey(ZxHWnd h) { return static_cast<uint64_t>(reinterpret_cast<uintptr_t>(h)); }
} // namespace

struct CZxISControlList::Controls {
    std::vector<CZxISControl*> items;
};
// Every dialog message of the routed kinds looks its sender up here.
struct CZxISControlList::Index {
    std::map<uint64_t, size_t> positions;
    /// Private messages offered to a control by its control id (lParam).
    std::vector<std::pair<uint32_t, CZxISControl*>> privateMessages;
};

CZxISControlList::CZxISControlList() : m_pControls(new Controls), m_pIndex(new Index) {}

CZxISControlList::~CZxISControlList()
{
    delete m_pIndex;
    delete m_pControls;
}

int32_t CZxISControlList::Add(CZxISControl* control, ZxHWnd* handles, int32_t count)
{
    if (!control || !handles || count < 1)
        return ZX_E_FAIL;
    std::vector<CZxISControl*>& items = m_pControls->items;
    size_t position = 0;
    while (position < items.size() && items[position] != control)
        ++position;
    if (position == items.size())
        items.push_back(control);
    // A missing item's null handle is not mapped: menu and accelerator commands
    // carry lParam 0 and must not reach a control.
    for (int32_t i = 0; i < count; ++i)
        if (handles[i])
            m_pIndex->positions[HandleKey(handles[i])] = position;
    return ZX_OK;
}

int32_t CZxISControlList::AddPrivateMessage(CZxISControl* control, uint32_t message)
{
    const std::vector<CZxISControl*>& items = m_pControls->items;
    if (!control || message < kWmUser || std::find(items.begin(), items.end(), control) == items.end())
        return ZX_E_FAIL;
    auto& privates = m_pIndex->privateMessages;
    const std::pair<uint32_t, CZxISControl*> entry(message, control);
    if (std::find(privates.begin(), privates.end(), entry) == privates.end())
        privates.push_back(entry);
    return ZX_OK;
}

void CZxISControlList::RemoveAt(size_t position)
{
    CZxISControl* control = m_pControls->items[position];
    auto& privates = m_pIndex->privateMessages;
    privates.erase(std::remove_if(privates.begin(), privates.end(),
                                  [control](const std::pair<uint32_t, CZxISControl*>& e) { return e.second == control; }),
                   privates.end());
    m_pControls->items.erase(m_pControls->items.begin() + static_cast<std::ptrdiff_t>(position));
    std::map<uint64_t, size_t>& positions = m_pIndex->positions;
    for (auto it = positions.begin(); it != positions.end();) {
        if (it->second == position) {
            it = positions.erase(it);
            continue;
        }
        if (it->second > position)
            --it->second;
        ++it;
    }
}

int32_t CZxISControlList::Remove(CZxISControl* control)
{
    std::vector<CZxISControl*>& items = m_pControls->items;
    for (size_t i = 0; i < items.size(); ++i)
        if (items[i] == control) {
            RemoveAt(i);
            break;
        }
    return ZX_OK;
}

int32_t CZxISControlList::RemoveMany(uint32_t mask, CZxISControl** removed, uint32_t* count)
{
    std::vector<CZxISControl*>& items = m_pControls->items;
    uint32_t n = 0;
    for (size_t i = 0; i < items.size();) {
        if (!InGroup(items[i], mask)) {
            ++i;
            continue;
        }
        if (removed)
            removed[n] = items[i];
        ++n;
        RemoveAt(i);
    }
    if (count)
        *count = n;
    return ZX_OK;
}

int32_t CZxISControlList::Clear()
{
    m_pControls->items.clear();
    m_pIndex->positions.clear();
    m_pIndex->privateMessages.clear();
    return ZX_OK;
}

CZxISControl* CZxISControlList::_FindControl(ZxHWnd handle, uint32_t mask)
{
    auto it = m_pIndex->positions.find(HandleKey(handle));
    if (it == m_pIndex->positions.end())
        return nullptr;
    CZxISControl* c = m_pControls->items[it->second];
    return InGroup(c, mask) ? c : nullptr;
}

bool CZxISControlList::DlgProcHookMany(ZxHWnd dialog, uint32_t message, ZxWParam wParam, ZxLParam lParam,
                                       ZxLResult* result, CZxISControl** found, uint32_t mask)
{
    CZxISControl* c = nullptr;
    if (message >= kWmUser) {
        // A control's own private message names the control by its id.
        for (const auto& e : m_pIndex->privateMessages)
            if (e.first == message && e.second->GetControlId() == static_cast<int32_t>(lParam) &&
                InGroup(e.second, mask)) {
                c = e.second;
                break;
            }
    } else if (message == kWmCommand || message == kWmHScroll || message == kWmVScroll ||
               message == kWmCtlColorStatic) {
        // WM_SYSCOMMAND and WM_TIMER lie between these numbers and stay with the dialog.
        c = _FindControl(reinterpret_cast<ZxHWnd>(lParam), mask);
    }
    if (!c)
        return false;
    if (found)
        *found = c;
    return c->DlgProcHook(dialog, message, wParam, lParam, result);
}

uint32_t CZxISControlList::GetCount() const { return static_cast<uint32_t>(m_pControls->items.size()); }

CZxISControl* CZxISControlList::GetAt(uint32_t index) const
{
    return index < m_pControls->items.size() ? m_pControls->items[index] : nullptr;
}

// ---- Bulk operations ---------------------------------------------------------

namespace {
// By index and re-reading the size, so a control that changes the list from its
// operation cannot make the walk read freed storage.
template <class F>
void ForGroup(const std::vector<CZxISControl*>& items, uint32_t mask, F f)
{
    for (size_t i = 0; i < items.size(); ++i)
        if (InGroup(items[i], mask))
            f(items[i]);
}
} // namespace

int32_t CZxISControlList::ReinitMany(uint32_t mask)
{
    ForGroup(m_pControls->items, mask, [](CZxISControl* c) { c->Reinit(); });
    return ZX_OK;
}

int32_t CZxISControlList::ReinitAndUpdateMany(uint32_t mask)
{
    ForGroup(m_pControls->items, mask, [](CZxISControl* c) {
        c->Reinit();
        c->UpdateState();
        c->UpdateFromGeneric();
    });
    return ZX_OK;
}

int32_t CZxISControlList::ResetToDefaultMany(uint32_t mask)
{
    ForGroup(m_pControls->items, mask, [](CZxISControl* c) { c->ResetToDefault(); });
    return ZX_OK;
}

int32_t CZxISControlList::UpdateFromGenericMany(uint32_t mask)
{
    ForGroup(m_pControls->items, mask, [](CZxISControl* c) { c->UpdateFromGeneric(); });
    return ZX_OK;
}

int32_t CZxISControlList::UpdateStateMany(uint32_t mask)
{
    ForGroup(m_pControls->items, mask, [](CZxISControl* c) { c->UpdateState(); });
    return ZX_OK;
}

int32_t CZxISControlList::EnableMany(bool enable, uint32_t mask)
{
    ForGroup(m_pControls->items, mask, [enable](CZxISControl* c) { c->Enable(enable); });
    return ZX_OK;
}

int32_t CZxISControlList::ShowMany(bool show, uint32_t mask)
{
    ForGroup(m_pControls->items, mask, [show](CZxISControl* c) { c->Show(show); });
    return ZX_OK;
}

int32_t CZxISControlList::ChangeModeMany(uint32_t mode, uint32_t mask)
{
    ForGroup(m_pControls->items, mask, [mode](CZxISControl* c) { c->ChangeMode(mode); });
    return ZX_OK;
}

int32_t CZxISControlList::DetachMany(uint32_t mask)
{
    ForGroup(m_pControls->items, mask, [](CZxISControl* c) { c->Detach(); });
    return ZX_OK;
}

// ---- Writing and refreshing ------------------------------------------------------

int32_t CZxISControlList::SetToGenericMany(CZxGenProvider_Low* provider, uint32_t mode, uint32_t mask)
{
    if (!provider)
        return ZX_E_FAIL;
    CZxVector_SZxGrabberPropertyValue values(128);
    ForGroup(m_pControls->items, mask, [&values](CZxISControl* c) {
        if (c->GetBoundTo() != CZxISControl::btProperty)
            return;
        SZxGrabberPropertyValue value(c->GetName());
        // Busy, unselected or unsupported controls refuse and are left out.
        if (c->GetPropValForGeneric(value) == ZX_OK)
            values.Add(value);
    });
    return provider->PropSet_WRP(mode, values, nullptr, false);
}

int32_t CZxISControlList::UpdateWithStateChangeInfo(const SZxStateChangeInfo& info)
{
    const std::vector<CZxISControl*>& items = m_pControls->items;
    auto formatBound = [](CZxISControl* c) { return c->GetBoundTo() == CZxISControl::btFormat; };
    // Format changes concern every format-bound control, whatever its group.
    if (info.m_bFormatChanged)
        for (size_t i = 0; i < items.size(); ++i)
            if (formatBound(items[i]))
                items[i]->Reinit();
    if (info.m_bFormatChanged || info.m_bFormatValuesChanged)
        for (size_t i = 0; i < items.size(); ++i)
            if (formatBound(items[i]))
                items[i]->UpdateFromGeneric();
    for (const SZxPropertyStateChangeInfo& rec : info.m_vecProps) {
        for (size_t i = 0; i < items.size(); ++i) {
            CZxISControl* c = items[i];
            if (c->GetBoundTo() != CZxISControl::btProperty || c->GetName().Compare(rec.m_wszName) != 0)
                continue;
            if (rec.m_bDefinitionChanged)
                c->Reinit();
            if (rec.m_bValueChanged || rec.m_bDefinitionChanged)
                c->UpdateFromGeneric();
            if (rec.m_bStateChanged || rec.m_bDefinitionChanged || rec.m_bValueChanged)
                c->UpdateState();
        }
    }
    return ZX_OK;
}

int32_t CZxISControlList::UpdateChangingPropsOnTimer()
{
    // Every property-bound control, whatever its group.
    const std::vector<CZxISControl*>& items = m_pControls->items;
    for (size_t i = 0; i < items.size(); ++i) {
        uint32_t state = 0;
        if (items[i]->GetBoundTo() == CZxISControl::btProperty && items[i]->_GetPropState(state) == ZX_OK &&
            (state & ZX_PROPSTATE_CHANGING))
            items[i]->UpdateFromGeneric();
    }
    return ZX_OK;
}
