#pragma once

#include "desk/lists/entity_kind.h"
#include "host/data/dataset.h"
#include "host/screens/base_get_new.h"

#include <memory>

namespace Ui {
class EntityGet;
}

namespace desk {

/// The editor of one group, store or unit. A new one gets the code after the highest and closes when it is saved.
class TEntity_Get_FRM : public host::TBaseGet_New_FRM
{
    Q_OBJECT

public:
    TEntity_Get_FRM(host::Host &host, const EntityKind &kind);
    ~TEntity_Get_FRM() override;

protected:
    void Prepare() override;
    void Load() override;
    std::vector<host::Check> Validate() override;
    void Write() override;
    void AfterWrite() override;
    QString PrepareRecoveryQuery() const override;
    QWidget *FirstControl() const override;

private:
    bool IsNew() const { return Mode() == host::TFormMode::New; }
    int Code() const;
    QString Name() const;
    bool NameTaken() const;
    QString RowText(int code) const;

    const EntityKind &m_kind;
    std::unique_ptr<Ui::EntityGet> m_ui;
    host::Dataset m_row;
};

} // namespace desk
