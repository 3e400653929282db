#include "screens/good_editor/code_proposal.h"

namespace {

/// How often another desk may snatch the proposed code away before the proposal is kept as it is: the save takes a free
/// one anyway.
constexpr int MaximumAttempts = 20;

} // namespace

int CodeProposal::Propose(int group)
{
    m_host.entities.ReleaseCodes(host::TSoftwarePart::Goods);
    const QString length = QString::number(m_host.settings.SettingRecord().GoodCodeLength);
    int code = 0;
    for (int attempt = 0; attempt < MaximumAttempts; ++attempt) {
        code = group > 0 ? m_data.Good_GetNewCode_GrpCode(QString::number(group), length)
                         : m_data.Good_GetNewCode(QString::number(group));
        if (m_host.entities.ReserveCode(host::TSoftwarePart::Goods, code)) {
            if (code != m_current)
                m_data.DeleteTmpphoto(code); // left by a desk that did not come to its end
            break;
        }
    }
    return code;
}

int CodeProposal::Begin(int group)
{
    m_current = 0;
    m_current = Propose(group);
    return m_current;
}

int CodeProposal::ChangeGroup(int group)
{
    const int code = Propose(group);
    if (code != m_current)
        m_data.Good_ChangeCode(code, m_current);
    m_current = code;
    return code;
}

bool CodeProposal::TakeTyped(int code)
{
    if (code == m_current)
        return true;
    if (!m_data.Good_IsNewRecordMode(code) || !m_host.entities.ReserveCode(host::TSoftwarePart::Goods, code))
        return false;
    m_data.DeleteTmpphoto(code);
    m_data.Good_ChangeCode(code, m_current);
    m_current = code;
    return true;
}

void CodeProposal::End()
{
    if (m_current == 0)
        return;
    m_current = 0;
    m_host.entities.ReleaseCodes(host::TSoftwarePart::Goods);
}
