#include "zxhost/menu.h"

CZxMenu::CZxMenu() = default;

CZxMenu::~CZxMenu()
{
    // DestroyMenu destroys the sub-menus with their parent; detach ours first
    // so each object destroys only its own handle.
    RemoveAll();
    if (m_hMenu)
        DestroyMenu(m_hMenu);
}

HMENU CZxMenu::GetHandle()
{
    if (!m_hMenu)
        m_hMenu = CreatePopupMenu();
    return m_hMenu;
}

bool CZxMenu::Insert(UINT id, const wchar_t* text, UINT type, HMENU sub)
{
    HMENU menu = GetHandle();
    if (!menu)
        return false;
    MENUITEMINFOW mii{};
    mii.cbSize = sizeof(mii);
    mii.fMask = MIIM_ID | MIIM_FTYPE | (type == MFT_SEPARATOR ? 0 : MIIM_STRING) | (sub ? MIIM_SUBMENU : 0);
    mii.fType = type;
    mii.wID = id;
    mii.hSubMenu = sub;
    mii.dwTypeData = const_cast<wchar_t*>(text ? text : L"");
    return InsertMenuItemW(menu, GetMenuItemCount(menu), TRUE, &mii) != FALSE;
}

bool CZxMenu::Append(UINT id, const wchar_t* text, bool enabled)
{
    return Insert(id, text, MFT_STRING, nullptr) && (enabled || Enable(id, false));
}

bool CZxMenu::AppendSeparator(UINT id) { return Insert(id, nullptr, MFT_SEPARATOR, nullptr); }

CZxMenu* CZxMenu::AppendPopup(UINT id, const wchar_t* text)
{
    auto sub = std::make_unique<CZxMenu>();
    if (!sub->GetHandle() || !Insert(id, text, MFT_STRING, sub->GetHandle()))
        return nullptr;
    m_popups.emplace_back(id, std::move(sub));
    return m_popups.back().second.get();
}

CZxMenu* CZxMenu::FindPopup(UINT id)
{
    for (auto& p : m_popups) {
        if (p.first == id)
            return p.second.get();
        if (CZxMenu* inner = p.second->FindPopup(id))
            return inner;
    }
    return nullptr;
}

namespace {
// The item of that id at this level or below: its menu and position. A popup
// item is matched by its own id, not by the ids inside it.
bool Locate(HMENU menu, UINT id, HMENU& owner, int& pos)
{
    if (!menu)
        return false;
    const int n = GetMenuItemCount(menu);
    for (int i = 0; i < n; ++i) {
        MENUITEMINFOW mii{};
        mii.cbSize = sizeof(mii);
        mii.fMask = MIIM_ID | MIIM_SUBMENU;
        if (!GetMenuItemInfoW(menu, i, TRUE, &mii))
            continue;
        if (mii.wID == id) {
            owner = menu;
            pos = i;
            return true;
        }
        if (mii.hSubMenu && Locate(mii.hSubMenu, id, owner, pos))
            return true;
    }
    return false;
}
} // namespace

bool CZxMenu::HasItem(UINT id) const
{
    HMENU owner;
    int pos;
    return Locate(m_hMenu, id, owner, pos);
}

bool CZxMenu::Enable(UINT id, bool enable)
{
    HMENU owner;
    int pos;
    return Locate(m_hMenu, id, owner, pos) &&
           EnableMenuItem(owner, pos, MF_BYPOSITION | (enable ? MF_ENABLED : MF_GRAYED)) != -1;
}

bool CZxMenu::Check(UINT id, bool check)
{
    HMENU owner;
    int pos;
    return Locate(m_hMenu, id, owner, pos) &&
           CheckMenuItem(owner, pos, MF_BYPOSITION | (check ? MF_CHECKED : MF_UNCHECKED)) != DWORD(-1);
}

bool CZxMenu::IsEnabled(UINT id) const
{
    HMENU owner;
    int pos;
    return Locate(m_hMenu, id, owner, pos) && !(GetMenuState(owner, pos, MF_BYPOSITION) & (MF_GRAYED | MF_DISABLED));
}

bool CZxMenu::IsChecked(UINT id) const
{
    HMENU owner;
    int pos;
    return Locate(m_hMenu, id, owner, pos) && (GetMenuState(owner, pos, MF_BYPOSITION) & MF_CHECKED);
}

CZxStringW CZxMenu::GetItemText(UINT id) const
{
    HMENU owner;
    int pos;
    wchar_t text[256] = {};
    if (Locate(m_hMenu, id, owner, pos))
        GetMenuStringW(owner, pos, text, 256, MF_BYPOSITION);
    return CZxStringW(text);
}

bool CZxMenu::Delete(UINT id)
{
    const int n = m_hMenu ? GetMenuItemCount(m_hMenu) : 0;
    for (int i = 0; i < n; ++i) {
        if (GetItemId(i) != id)
            continue;
        // A sub-menu object of ours: unhook its handle, then let the object destroy it.
        for (auto it = m_popups.begin(); it != m_popups.end(); ++it)
            if (it->first == id) {
                RemoveMenu(m_hMenu, i, MF_BYPOSITION);
                m_popups.erase(it);
                return true;
            }
        return DeleteMenu(m_hMenu, i, MF_BYPOSITION) != FALSE;
    }
    for (auto& p : m_popups)
        if (p.second->Delete(id))
            return true;
    return false;
}

void CZxMenu::RemoveAll()
{
    if (!m_hMenu)
        return;
    for (int n = GetMenuItemCount(m_hMenu); n > 0; --n)
        RemoveMenu(m_hMenu, n - 1, MF_BYPOSITION);
    m_popups.clear();
}

int CZxMenu::GetItemCount() const { return m_hMenu ? GetMenuItemCount(m_hMenu) : 0; }

UINT CZxMenu::GetItemId(int pos) const
{
    MENUITEMINFOW mii{};
    mii.cbSize = sizeof(mii);
    mii.fMask = MIIM_ID;
    return m_hMenu && GetMenuItemInfoW(m_hMenu, pos, TRUE, &mii) ? mii.wID : 0;
}

int CZxMenu::Track(UINT flags, int x, int y, HWND owner, UINT* selected)
{
    if (selected)
        *selected = 0;
    HMENU menu = GetHandle();
    if (!menu || !IsWindow(owner))
        return -11;
    UINT tpm = TPM_RETURNCMD | TPM_NONOTIFY | TPM_LEFTBUTTON;
    tpm |= (flags & TRACK_RIGHT) ? TPM_RIGHTALIGN : TPM_LEFTALIGN;
    tpm |= TPM_TOPALIGN;
    // The menu's owner must be the foreground window or the menu does not close
    // when the user clicks elsewhere.
    SetForegroundWindow(owner);
    const UINT id = static_cast<UINT>(TrackPopupMenuEx(menu, tpm, x, y, owner, nullptr));
    PostMessageW(owner, WM_NULL, 0, 0);
    if (selected)
        *selected = id;
    return 0;
}
