#pragma once

#include "data/goods/good_bulk_records.h"
#include "screens/bulk_changes/ask_screen.h"

#include <memory>

namespace goods {
class Prices;
}

namespace Ui {
class TGood_UpdatePrice_FRM;
}

/// Asks what is to be done to one price of many goods. It changes nothing itself; the caller reads the instruction.
class TGood_UpdatePrice_FRM : public TAsk_FRM
{
    Q_OBJECT

public:
    /// `prices` names the levels and outlives the screen.
    TGood_UpdatePrice_FRM(host::Host &host, goods::Prices &prices);
    ~TGood_UpdatePrice_FRM() override;

    /// What the user asked for; meaningful after the screen closed with OK.
    const goods::PriceInstruction &Instruction() const { return m_instruction; }
    /// The same in words, as the list of changes tells it.
    QString InstructionText() const { return m_text; }

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void FormShow() override;
    void BeforeChecks() override;
    std::vector<host::Check> Validate() override;
    void Write() override;
    QWidget *FirstControl() const override;

private:
    void ShowKind();
    void ShowOption();
    int Option() const;
    QString Text() const;

    std::unique_ptr<Ui::TGood_UpdatePrice_FRM> m_ui;
    goods::Prices &m_prices;
    goods::PriceInstruction m_instruction;
    QString m_text;
};
