#pragma once

#include "detailtypes/detail_types_dm.h"
#include "host/screens/base_get.h"

#include <memory>

class DetailItems;

namespace Ui {
class TDetailTypes_Get_FRM;
}

/// The screen on which one detail type is created or changed. Its form follows the kind of the type.
///
/// `Open({}, TFormMode::New)` or `Open(id, TFormMode::Edit)` gives 1 when a type was saved. The screen asks for the
/// user's right to create or change detail types itself and gives up opening without it.
class TDetailTypes_Get_FRM : public host::TBaseGet_FRM
{
    Q_OBJECT

public:
    explicit TDetailTypes_Get_FRM(host::Host &host);
    ~TDetailTypes_Get_FRM() override;

protected:
    void Prepare() override;
    void Load() override;
    std::vector<host::Check> Validate() override;
    void Write() override;
    QWidget *FirstControl() const override;
    QString PrepareRecoveryQuery() const override;
    void FormShown() override;
    void NextControl() override;
    void showEvent(QShowEvent *event) override;

private:
    void BindItems();
    void BindToggle();
    bool IsNew() const { return Mode() == host::TFormMode::New; }
    void Clear();
    void Show(const TDetailType_Rec &record);

    TDetailKind Kind() const;
    void ApplyKind();
    void ApplyRequired(bool always);
    void KeepHigh();
    void SetCalendar(TDetailCalendar calendar);
    void ShowStateCaptions();
    void AddItem();

    bool TitleTaken();
    bool ReminderTaken();
    host::Refused IdentifiesAlone();
    TDetailType_Rec Record() const;
    void LeaveUnchanged(TDetailType_Rec &record, QStringList &items);

    std::unique_ptr<Ui::TDetailTypes_Get_FRM> m_ui;
    TDetailTypes_DM m_data;
    DetailItems *m_items = nullptr;
    /// The type as it was loaded: what no control of its kind shows is written back as it was.
    TDetailType_Rec m_loaded;
    TDetailType_Rec m_before;         ///< as the inputs say it, before anything is changed
    QStringList m_itemsBefore;        ///< the same of the items
    bool m_isRequiredTouched = false; ///< the user clicked the box since the screen was shown
    bool m_isRequiredUserValue = false;
    bool m_shown = false;
};
