// A control that records which of its operations the list called, in order,
// into a log shared by all controls of a test ("a:Reinit", "b:UpdateState", ...).
#pragma once
#include <string>
#include <vector>
#include "zx/inputsetupcontrols.h"

class RecordingControl : public CZxISControl {
public:
    RecordingControl(std::vector<std::string>& log, const char* tag, uint32_t groupMask,
                     EBoundTo boundTo = btProperty, const wchar_t* name = L"Gain", int32_t id = 0)
        : CZxISControl(ctValueEditor, boundTo, name, 1, id, groupMask), m_log(log), m_tag(tag)
    {
    }

    int32_t Reinit() override { return Note("Reinit"); }
    int32_t UpdateState() override { return Note("UpdateState"); }
    int32_t UpdateFromGeneric() override { return Note("UpdateFromGeneric"); }
    int32_t ResetToDefault() override { return Note("ResetToDefault"); }
    int32_t Enable(bool b) override { return Note(b ? "Enable1" : "Enable0"); }
    int32_t Show(bool b) override { return Note(b ? "Show1" : "Show0"); }
    int32_t ChangeMode(uint32_t m) override
    {
        CZxISControl::ChangeMode(m);
        return Note("ChangeMode");
    }
    int32_t Detach() override { return Note("Detach"); }
    int32_t GetPropValForGeneric(SZxGrabberPropertyValue& value) override
    {
        if (m_iGives == 0)
            value.m_varValue = m_varGives;
        return m_iGives;
    }
    bool DlgProcHook(ZxHWnd, uint32_t message, ZxWParam, ZxLParam, ZxLResult* result) override
    {
        Note("Hook");
        if (result)
            *result = 77;
        return m_handles;
    }

    bool m_handles = true;     ///< what DlgProcHook answers
    int32_t m_iGives = -2;     ///< what GetPropValForGeneric answers
    CZxVariant m_varGives;     ///< the value it gives when it answers 0

private:
    int32_t Note(const char* op)
    {
        m_log.push_back(m_tag + ":" + op);
        return -1; // the list must ignore the controls' results
    }
    std::vector<std::string>& m_log;
    std::string m_tag;
};
