#pragma once

#include "screens/bulk_changes/ask_screen.h"

#include <memory>

namespace Ui {
class TSelectedGoodSaveGoodType_FRM;
}

/// Asks for the asset class that many goods are to get.
class TSelectedGoodSaveGoodType_FRM : public TAsk_FRM
{
    Q_OBJECT

public:
    explicit TSelectedGoodSaveGoodType_FRM(host::Host &host);
    ~TSelectedGoodSaveGoodType_FRM() override;

    /// The code of the chosen class; meaningful after the screen closed with OK.
    int GoodType() const { return m_goodType; }
    /// Its name, for the list of changes.
    QString GoodTypeName() const { return m_goodTypeName; }

protected:
    void FormShow() override;
    std::vector<host::Check> Validate() override;
    void Write() override;
    QWidget *FirstControl() const override;

private:
    std::unique_ptr<Ui::TSelectedGoodSaveGoodType_FRM> m_ui;
    int m_goodType = 0;
    QString m_goodTypeName;
};
