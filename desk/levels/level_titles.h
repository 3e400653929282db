#pragma once

#include "desk/levels/level_store.h"
#include "host/screens/base_save.h"

#include <memory>

class QLineEdit;

namespace Ui {
class LevelTitles;
}

namespace desk {

/// The titles of the price levels or of the discount levels, an edit each.
class TLevel_Titles_FRM : public host::TBaseSave_FRM
{
    Q_OBJECT

public:
    TLevel_Titles_FRM(host::Host &host, LevelKind kind);
    ~TLevel_Titles_FRM() override;

    /// Shows the screen modally, for those who may change goods; true when a title was changed.
    bool Change();

protected:
    void FormShow() override;
    bool FormKeyDown(QKeyEvent *event) override;
    std::vector<host::Check> Validate() override;
    void Write() override;
    void Proceed() override;

private:
    QString Typed(qsizetype row) const;
    bool IsChanged(qsizetype row) const;
    /// How a level is called that has no title.
    QString Number(qsizetype row) const;
    host::Refused CheckGiven() const;
    host::Refused CheckUnique() const;

    LevelKind m_kind;
    std::unique_ptr<Ui::LevelTitles> m_ui;
    LevelStore m_store;
    QList<LevelTitle> m_loaded;
    QList<QLineEdit *> m_edits;
    bool m_changed = false;
};

} // namespace desk
