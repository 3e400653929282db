#include "screens/good_editor/code_proposal.h"

namespace {

/// How often another desk may snatch the proposed code away before the proposal is kept as it is: the save takes a free
/// one anyway.
constexpr int MaximumAttempts = 20;

} // namespace

int CodeProposal::Propose(int group)
{
    host_.entities.ReleaseCodes(host::TSoftwarePart::Goods);
    const QString length = QString::number(host_.settings.SettingRecord().GoodCodeLength);
    int code = 0;
    for (int attempt = 0; attempt < MaximumAttempts; ++attempt) {
        code = group > 0 ? data_.Good_GetNewCode_GrpCode(QString::number(group), length)
                         : data_.Good_GetNewCode(QString::number(group));
        if (host_.entities.ReserveCode(host::TSoftwarePart::Goods, code))
            break;
    }
    return code;
}

int CodeProposal::Begin(int group)
{
    current_ = Propose(group);
    return current_;
}

int CodeProposal::ChangeGroup(int group)
{
    const int code = Propose(group);
    if (code != current_)
        data_.Good_ChangeCode(code, current_);
    current_ = code;
    return code;
}

bool CodeProposal::TakeTyped(int code)
{
    if (code == current_)
        return true;
    if (!data_.Good_IsNewRecordMode(code) || !host_.entities.ReserveCode(host::TSoftwarePart::Goods, code))
        return false;
    data_.Good_ChangeCode(code, current_);
    current_ = code;
    return true;
}

void CodeProposal::End()
{
    if (current_ == 0)
        return;
    current_ = 0;
    host_.entities.ReleaseCodes(host::TSoftwarePart::Goods);
}
