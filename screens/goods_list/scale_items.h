#pragma once

#include "data/goods/good_dm.h"
#include "host/screens/base_dock.h"

#include <QStringList>

#include <memory>

namespace Ui {
class ScaleItems;
}

/// The goods on the weighing scales and what the scales have not been told yet. Goods chosen on the list are put on,
/// items are taken off, changed prices are sent; the program of the scales does the rest in its own time.
class TScale_Items_FRM : public host::TBaseDock_FRM
{
    Q_OBJECT

public:
    /// `goods` outlives the screen. `chosen`: codes of the goods that can be put on.
    TScale_Items_FRM(host::Host &host, TGood_DM &goods, const QStringList &chosen);
    ~TScale_Items_FRM() override;

protected:
    void FormShow() override;
    void FormClose() override;
    bool FormKeyDown(QKeyEvent *event) override;
    host::Grid *PrintedGrid() const override;
    QByteArray SaveState() const override;
    void RestoreState(const QByteArray &state) override;

private:
    void BindCommands();
    void Refresh();
    bool Allowed();
    int Level() const;
    void PutOn();
    void TakeOff();
    void SendChanges();
    void Tell(const goods::ScaleResult &result);

    std::unique_ptr<Ui::ScaleItems> m_ui;
    TGood_DM &m_goods;
    QStringList m_chosen;
    int m_storedLevel = 1;
};
