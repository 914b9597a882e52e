// Choice controls: the user picks one value out of a list the driver defines.
// Drop-down combos over the property's list, the two combos bound to the camera
// format (the format itself and its binning), check boxes, radio buttons and
// list steppers. Classes ending in NT show their labels untranslated.
// Windows only; every control runs on the dialog's (UI) thread.
#pragma once
#include "zx/iscontrolbase.h"
#include "zxhost/vector.h"

struct tagDRAWITEMSTRUCT;

/// Draws an owner-drawn check button from the library's bitmaps "QEN_CHECKED",
/// "QEN_UNCHECKED", "QEN_DISABLED_CHECKED" and "QEN_DISABLED_UNCHECKED": the
/// bitmap of the state at the left of the item, vertically centred, and, with
/// `drawText`, the button's window text to its right (grey when disabled) with a
/// focus frame when the item has the focus. ZX_OK, or ZX_E_FAIL for a null item or DC.
ZX_API int32_t ZX_DrawCheckButton(const tagDRAWITEMSTRUCT* item, bool checked, bool disabled, bool drawText);

/// One entry of a choice list: the label as the driver gives it (untranslated)
/// and the value written when it is chosen.
struct SZxISChoiceEntry {
    /// The label as the driver gives it; the combo shows it translated.
    CZxStringW m_wstrLabel;
    /// The value written when the entry is chosen.
    CZxVariant m_varValue;
};
/// The entries of one list, in the driver's order.
typedef CZxVector<SZxISChoiceEntry> CZxISChoiceEntries;

/// A drop-down combo over the texts of the definition's "m_list". The labels are
/// shown translated; the value written is the list element itself. While the
/// list is dropped the control is busy: UpdateFromGeneric and ResetToDefault
/// return ZX_E_BUSY and leave the list alone. A definition without a usable list
/// (no "m_list", an empty list, an element of the wrong kind) is reported
/// through DiagAssertW and leaves the combo empty (ZX_E_FAIL).
class ZX_API CZxISControlCombo : public CZxISControl {
public:
    /// With `fixedMode`, ChangeMode is ignored and the control keeps `mode`.
    CZxISControlCombo(const wchar_t* name, uint32_t mode, int32_t comboId, uint32_t groupMask, bool fixedMode);

    /// Switches the setting set unless the control was made with `fixedMode`. ZX_OK.
    int32_t ChangeMode(uint32_t mode) override;
    /// Refills the combo only when its texts differ from the translated list. An
    /// unchanged combo keeps its selection; a refilled one selects the entry of the
    /// driver's current value, or none when no entry holds it.
    int32_t Reinit() override;
    int32_t UpdateFromGeneric() override;
    /// Writes the default, then shows it as UpdateFromGeneric does.
    int32_t ResetToDefault() override;
    /// The value of the selected entry; ZX_E_NOSELECTION without a selection.
    int32_t GetPropValForGeneric(SZxGrabberPropertyValue& value) override;
    bool DlgProcHook(ZxHWnd dialog, uint32_t message, ZxWParam wParam, ZxLParam lParam,
                     ZxLResult* result) override;

    /// True while the drop-down list is open (the control is busy).
    bool IsDropped() const { return m_bDropped; }
    /// True when ChangeMode is ignored.
    bool IsFixedMode() const { return m_bFixedMode; }

protected:
    /// Set while the control fills or selects its own list.
    bool m_bUpdating;
    /// The drop-down list is open.
    bool m_bDropped;
    /// ChangeMode is ignored.
    bool m_bFixedMode;

    /// Name of the definition's list member.
    virtual const wchar_t* _ListMember() const;
    /// Turns one list element into its entry; false (with an assertion) for an
    /// element of the wrong kind.
    virtual bool _Entry(const CZxVariant& element, SZxISChoiceEntry& entry);
    /// Item data an entry keeps in the combo (0: none).
    virtual ZxLParam _ItemData(const SZxISChoiceEntry& entry);
    /// The entry to select for `value`, -1 for none. Base: the last entry whose
    /// label equals the value as text.
    virtual int32_t _FindEntry(const CZxISChoiceEntries& entries, const CZxVariant& value);
    /// Called after the selection changed (by the user or the control).
    virtual void _SelectionShown(int32_t index);

    /// Reads the definition and its entries; ZX_E_FAIL (with an assertion) for a bad list.
    int32_t _ReadEntries(CZxISChoiceEntries& entries);
    /// Fills the combo with the translated labels unless it already shows them;
    /// true when it refilled the combo (which empties its selection).
    bool _Fill(const CZxISChoiceEntries& entries, bool onlyWhenDifferent);
    /// Fills, then selects the entry of `value`.
    int32_t _Show(const CZxVariant& value);
};

/// A combo with an information text per entry, shown as the combo's tooltip for
/// the selected entry.
class ZX_API CZxISControlComboEx : public CZxISControlCombo {
public:
    /// Binds the list property `name` to the combo `comboId` (arguments as CZxISControlCombo).
    CZxISControlComboEx(const wchar_t* name, uint32_t mode, int32_t comboId, uint32_t groupMask, bool fixedMode);
    /// Destroys the tooltip and the information texts.
    ~CZxISControlComboEx() override;
    /// Not copyable (it owns its tooltip).
    CZxISControlComboEx(const CZxISControlComboEx&) = delete;
    /// Not copyable.
    CZxISControlComboEx& operator=(const CZxISControlComboEx&) = delete;

    int32_t Detach() override;
    /// The information texts of the entries, in list order (`count` texts; null
    /// entries are empty). Translated like the labels. ZX_OK; ZX_E_FAIL for null texts with a
    /// positive count.
    int32_t SetInfoText(const wchar_t* const* texts, int32_t count);
    /// The information text shown now (empty without a selection or a text).
    CZxStringW GetShownInfoText() const;

protected:
    void _SelectionShown(int32_t index) override;

private:
    CZxVector<CZxStringW>* m_pInfoTexts;
    ZxHWnd m_hTooltip;
    CZxStringW m_wstrShownInfo;
};

/// A combo over a list of zx_int32 values, each shown as "%d"; the value is kept
/// as the entry's item data and written as zx_int32.
class ZX_API CZxISControlComboInt32 : public CZxISControlComboEx {
public:
    /// Binds a list of "zx_int32" values (arguments as CZxISControlCombo).
    CZxISControlComboInt32(const wchar_t* name, uint32_t mode, int32_t comboId, uint32_t groupMask,
                           bool fixedMode);
    int32_t GetPropValForGeneric(SZxGrabberPropertyValue& value) override;

protected:
    bool _Entry(const CZxVariant& element, SZxISChoiceEntry& entry) override;
    ZxLParam _ItemData(const SZxISChoiceEntry& entry) override;
    int32_t _FindEntry(const CZxISChoiceEntries& entries, const CZxVariant& value) override;
};

/// A combo over a list of doubles, each shown as "%.1f" (translated like every
/// label); the current value is the first entry whose untranslated "%.1f" text is
/// the value's, so a translation that writes numbers otherwise still finds it.
class ZX_API CZxISControlComboDouble : public CZxISControlCombo {
public:
    /// Binds a list of "double" values (arguments as CZxISControlCombo).
    CZxISControlComboDouble(const wchar_t* name, uint32_t mode, int32_t comboId, uint32_t groupMask,
                            bool fixedMode);

protected:
    bool _Entry(const CZxVariant& element, SZxISChoiceEntry& entry) override;
    int32_t _FindEntry(const CZxISChoiceEntries& entries, const CZxVariant& value) override;
};

/// A combo over records "m_iValue" + "m_wstrText": the text is shown, the
/// value (kept as item data) written.
class ZX_API CZxISControlComboTextInt32 : public CZxISControlCombo {
public:
    /// Binds a list of integer records (arguments as CZxISControlCombo).
    CZxISControlComboTextInt32(const wchar_t* name, uint32_t mode, int32_t comboId, uint32_t groupMask,
                               bool fixedMode);
    int32_t GetPropValForGeneric(SZxGrabberPropertyValue& value) override;

protected:
    bool _Entry(const CZxVariant& element, SZxISChoiceEntry& entry) override;
    ZxLParam _ItemData(const SZxISChoiceEntry& entry) override;
    int32_t _FindEntry(const CZxISChoiceEntries& entries, const CZxVariant& value) override;
};

/// A combo over records "m_dValue" + "m_wstrText" of the member "m_List" (so
/// spelled for double lists).
class ZX_API CZxISControlComboTextDouble : public CZxISControlCombo {
public:
    /// Binds a list of double records (arguments as CZxISControlCombo).
    CZxISControlComboTextDouble(const wchar_t* name, uint32_t mode, int32_t comboId, uint32_t groupMask,
                                bool fixedMode);

protected:
    const wchar_t* _ListMember() const override;
    bool _Entry(const CZxVariant& element, SZxISChoiceEntry& entry) override;
    int32_t _FindEntry(const CZxISChoiceEntries& entries, const CZxVariant& value) override;
};

/// A combo over records "m_wstrValue" + "m_wstrText".
class ZX_API CZxISControlComboTextStringW : public CZxISControlCombo {
public:
    /// Binds a list of string records (arguments as CZxISControlCombo).
    CZxISControlComboTextStringW(const wchar_t* name, uint32_t mode, int32_t comboId, uint32_t groupMask,
                                 bool fixedMode);

protected:
    bool _Entry(const CZxVariant& element, SZxISChoiceEntry& entry) override;
    int32_t _FindEntry(const CZxISChoiceEntries& entries, const CZxVariant& value) override;
};

/// The camera format of the control's mode, chosen from the provider's formats
/// (at most 64; with `filterByMode` only those serving the mode). A choice is
/// set between WM_IS_FORMATCHANGING and WM_IS_FORMATCHANGED. The name is empty.
class ZX_API CZxISControlComboFormat : public CZxISControl {
public:
    /// Most formats the combo offers.
    enum { kMaxFormats = 64 /**< most formats offered */ };
    /// The format of set `mode` on the combo `comboId`; `filterByMode` offers only
    /// the formats flagged for that set.
    CZxISControlComboFormat(uint32_t mode, int32_t comboId, uint32_t groupMask, bool filterByMode);
    /// Frees the kept formats.
    ~CZxISControlComboFormat() override;
    /// Not copyable (it owns its format copies).
    CZxISControlComboFormat(const CZxISControlComboFormat&) = delete;
    /// Not copyable.
    CZxISControlComboFormat& operator=(const CZxISControlComboFormat&) = delete;

    /// A format has no property state: enabled exactly when there are formats.
    int32_t UpdateState() override;
    int32_t Reinit() override;
    /// ZX_E_FAIL when the current format cannot be read.
    int32_t UpdateFromGeneric() override;
    /// Sets the first format carrying the mode's default flag (modes 1 and 2 only).
    int32_t ResetToDefault() override;
    bool DlgProcHook(ZxHWnd dialog, uint32_t message, ZxWParam wParam, ZxLParam lParam,
                     ZxLResult* result) override;

    /// The formats kept by the last Reinit, in the combo's order.
    int32_t GetFormatCount() const;
    /// The kept format at `index`, or null out of range.
    const SZxGrabberFormatValue* GetFormat(int32_t index) const;

private:
    bool m_bUpdating;
    bool m_bFilterByMode;
    CZxVector<SZxGrabberFormatValue>* m_pFormats;

    void SetFormat(SZxGrabberFormatValue& format);
};

/// The binning of the current format: the formats of its group, shown as "No
/// Binning" or "Binning %dx%d". Each entry keeps a copy of its format (from the
/// host allocator) as item data, freed on the next Reinit and with the control.
/// A choice is announced (WM_IS_FORMATCHANGING / WM_IS_FORMATCHANGED) only when
/// the control's mode equals its notify mode (0 unless SetNotifyMode says
/// otherwise: a combo of the set in use announces by default).
class ZX_API CZxISControlComboBinning : public CZxISControl {
public:
    /// The binning of set `mode`'s format on the combo `comboId`; `name` (may be
    /// empty) names a property whose state enables the combo.
    CZxISControlComboBinning(const wchar_t* name, uint32_t mode, int32_t comboId, uint32_t groupMask);
    /// Frees the format copies of the entries.
    ~CZxISControlComboBinning() override;
    /// Not copyable (it owns its format copies).
    CZxISControlComboBinning(const CZxISControlComboBinning&) = delete;
    /// Not copyable.
    CZxISControlComboBinning& operator=(const CZxISControlComboBinning&) = delete;

    /// With a name, the state of that property (as for property controls);
    /// without one, enabled exactly when there is more than one binning to choose.
    int32_t UpdateState() override;
    int32_t Reinit() override;
    int32_t UpdateFromGeneric() override;
    bool DlgProcHook(ZxHWnd dialog, uint32_t message, ZxWParam wParam, ZxLParam lParam,
                     ZxLResult* result) override;

    /// The mode whose format changes the host wants announced.
    void SetNotifyMode(uint32_t mode) { m_uiNotifyMode = mode; }
    /// The mode whose format changes are announced (0: the set in use).
    uint32_t GetNotifyMode() const { return m_uiNotifyMode; }
    /// The format group the entries belong to (-1 before the first Reinit).
    int32_t GetGroup() const { return m_iGroup; }

private:
    bool m_bUpdating;
    int32_t m_iGroup;
    uint32_t m_uiNotifyMode;
    /// The copies the entries point at, also freed when the dialog went first.
    CZxVector<SZxGrabberFormatValue*>* m_pCopies;

    void FreeCopies();
};

/// A check box over a boolean property. With `inverted` the box is checked
/// when the property is false. With `reportStateChange` a click writes through
/// `_SetPropValueGetStateChange`, so the host learns which other properties the
/// change switched (WM_IS_STATECHANGE); otherwise through `_SetPropValue`.
class ZX_API CZxISControlCheck : public CZxISControl {
public:
    /// Binds the "bool" property `name` to the check box `checkId`.
    CZxISControlCheck(const wchar_t* name, uint32_t mode, int32_t checkId, uint32_t groupMask, bool inverted,
                      bool reportStateChange);

    int32_t UpdateFromGeneric() override;
    int32_t ResetToDefault() override;
    int32_t GetPropValForGeneric(SZxGrabberPropertyValue& value) override;
    bool DlgProcHook(ZxHWnd dialog, uint32_t message, ZxWParam wParam, ZxLParam lParam,
                     ZxLResult* result) override;

    /// True when the box is checked for a false property.
    bool IsInverted() const { return m_bInverted; }
    /// True when a click writes through _SetPropValueGetStateChange.
    bool ReportsStateChange() const { return m_bReportStateChange; }

private:
    bool m_bUpdating;
    bool m_bInverted;
    bool m_bReportStateChange;

    void ShowValue(const CZxVariant& value);
};

/// A check drawn by its owner with ZX_DrawCheckButton (an owner-drawn button).
/// The checked state is the control's own; a click toggles it, repaints the
/// button and writes the state. The dialog hands its WM_DRAWITEM for the button
/// to DrawItem.
class ZX_API CZxISControlCheckOwnerDraw : public CZxISControl {
public:
    /// Binds the "bool" property `name` to the owner-drawn button `buttonId`.
    CZxISControlCheckOwnerDraw(const wchar_t* name, uint32_t mode, int32_t buttonId, uint32_t groupMask);

    int32_t UpdateFromGeneric() override;
    int32_t ResetToDefault() override;
    int32_t GetPropValForGeneric(SZxGrabberPropertyValue& value) override;
    bool DlgProcHook(ZxHWnd dialog, uint32_t message, ZxWParam wParam, ZxLParam lParam,
                     ZxLResult* result) override;
    /// Draws the button (its WM_DRAWITEM); false when the item is not this control's.
    bool DrawItem(const tagDRAWITEMSTRUCT* item);

    /// The state the button shows.
    bool IsChecked() const { return m_bChecked; }

private:
    bool m_bUpdating;
    bool m_bChecked;

    void Repaint();
};

/// Radio buttons with consecutive ids first..last, one per element of "m_list"
/// (labelled by Reinit; buttons without an element are hidden and disabled). A click
/// writes the button's element (for a record, its value member); properties
/// flagged as changing the format are written format-aware.
class ZX_API CZxISControlRadio : public CZxISControl {
public:
    /// Binds the list property `name` to the radio buttons `firstId`..`lastId`.
    CZxISControlRadio(const wchar_t* name, uint32_t mode, int32_t firstId, int32_t lastId, uint32_t groupMask);

    /// Registers the control once under all its buttons.
    int32_t Attach(ZxHWnd dialog, CZxGenProvider_Low* provider, CZxISControlList* list) override;
    int32_t Enable(bool enable) override;
    int32_t Show(bool show) override;
    int32_t Reinit() override;
    int32_t UpdateFromGeneric() override;
    int32_t ResetToDefault() override;
    int32_t GetPropValForGeneric(SZxGrabberPropertyValue& value) override;
    bool DlgProcHook(ZxHWnd dialog, uint32_t message, ZxWParam wParam, ZxLParam lParam,
                     ZxLResult* result) override;

    /// Id of the last radio button.
    int32_t GetLastId() const { return m_iLastId; }

private:
    int32_t m_iLastId;
    int32_t m_iCount;   ///< list elements at the last Reinit

    void Check(int32_t index);
};

/// An edit with an up-down that steps through "m_list": the up-down's range is
/// 0 .. count - 1, the edit shows the (translated) element and the element is
/// written.
class ZX_API CZxISControlSpinList : public CZxISControl {
public:
    /// Binds the list property `name` to the edit `editId` and the up-down `spinId`.
    CZxISControlSpinList(const wchar_t* name, uint32_t mode, int32_t editId, int32_t spinId, uint32_t groupMask);

    /// Registers the control under the edit and the up-down.
    int32_t Attach(ZxHWnd dialog, CZxGenProvider_Low* provider, CZxISControlList* list) override;
    int32_t Enable(bool enable) override;
    int32_t Show(bool show) override;
    int32_t Reinit() override;
    int32_t UpdateFromGeneric() override;
    int32_t ResetToDefault() override;
    /// The element shown; ZX_E_NOSELECTION when none is.
    int32_t GetPropValForGeneric(SZxGrabberPropertyValue& value) override;
    bool DlgProcHook(ZxHWnd dialog, uint32_t message, ZxWParam wParam, ZxLParam lParam,
                     ZxLResult* result) override;

    /// Id of the up-down.
    int32_t GetSpinId() const { return m_iSpinId; }

private:
    int32_t m_iSpinId;
    bool m_bUpdating;
    /// The element shown (-1: none). An up-down reads its position back from its
    /// buddy's text, which here is a label, so the control keeps it itself.
    int32_t m_iIndex;

    void ShowIndex(int32_t index);
};

/// A text item with next and previous buttons stepping through "m_list". The
/// property's value is the index (zx_int32), not the element; the text shows the
/// translated element. A click at an end changes nothing but counts as handled.
class ZX_API CZxISControlNextPrevList : public CZxISControl {
public:
    /// Binds the index property `name` to the text `textId` and the buttons
    /// `nextId` and `previousId`.
    CZxISControlNextPrevList(const wchar_t* name, uint32_t mode, int32_t textId, int32_t nextId,
                             int32_t previousId, uint32_t groupMask);

    /// Registers the control under both buttons.
    int32_t Attach(ZxHWnd dialog, CZxGenProvider_Low* provider, CZxISControlList* list) override;
    int32_t Enable(bool enable) override;
    int32_t Show(bool show) override;
    int32_t UpdateFromGeneric() override;
    int32_t ResetToDefault() override;
    /// The index shown; ZX_E_NOSELECTION when none is.
    int32_t GetPropValForGeneric(SZxGrabberPropertyValue& value) override;
    bool DlgProcHook(ZxHWnd dialog, uint32_t message, ZxWParam wParam, ZxLParam lParam,
                     ZxLResult* result) override;

    /// The index shown, -1 until a value is shown.
    int32_t GetIndex() const { return m_iIndex; }

private:
    int32_t m_iNextId;
    int32_t m_iPreviousId;
    int32_t m_iIndex;   ///< -1 until a value is shown
    int32_t m_iCount;

    void ShowIndex(const CZxVariant& list, int32_t index);
};

// The same controls with their labels shown untranslated.

/// CZxISControlCombo with its labels shown as the driver gives them, untranslated.
class ZX_API CZxISControlComboNT : public CZxISControlCombo {
public:
    /// The constructor of CZxISControlCombo.
    using CZxISControlCombo::CZxISControlCombo;
    CZxStringW GetTranslation(const wchar_t* text, const char* sourceFile) override;
};

/// CZxISControlComboEx with its labels shown as the driver gives them, untranslated.
class ZX_API CZxISControlComboExNT : public CZxISControlComboEx {
public:
    /// The constructor of CZxISControlComboEx.
    using CZxISControlComboEx::CZxISControlComboEx;
    CZxStringW GetTranslation(const wchar_t* text, const char* sourceFile) override;
};

/// CZxISControlSpinList with its labels shown as the driver gives them, untranslated.
class ZX_API CZxISControlSpinListNT : public CZxISControlSpinList {
public:
    /// The constructor of CZxISControlSpinList.
    using CZxISControlSpinList::CZxISControlSpinList;
    CZxStringW GetTranslation(const wchar_t* text, const char* sourceFile) override;
};

/// CZxISControlNextPrevList with its labels shown as the driver gives them, untranslated.
class ZX_API CZxISControlNextPrevListNT : public CZxISControlNextPrevList {
public:
    /// The constructor of CZxISControlNextPrevList.
    using CZxISControlNextPrevList::CZxISControlNextPrevList;
    CZxStringW GetTranslation(const wchar_t* text, const char* sourceFile) override;
};

/// CZxISControlRadio with its labels shown as the driver gives them, untranslated.
class ZX_API CZxISControlRadioNT : public CZxISControlRadio {
public:
    /// The constructor of CZxISControlRadio.
    using CZxISControlRadio::CZxISControlRadio;
    CZxStringW GetTranslation(const wchar_t* text, const char* sourceFile) override;
};
