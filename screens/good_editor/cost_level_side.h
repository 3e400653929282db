#pragma once

#include "data/goods/good_prices.h"
#include "host/screens/refusals.h"

#include <QObject>

class QComboBox;
class QLabel;

namespace host {
class Grid;
}

/// The price levels of one side, sale or purchase: the grid of prices, edited in place, and the default level. What is
/// typed goes to the good's working rows at once and reaches its price row when the good is saved.
class CostLevelSide : public QObject
{
    Q_OBJECT

public:
    /// The controls belong to the page, which is `parent`. `run` is the boundary of errors for what happens at once.
    CostLevelSide(goods::Prices::Side side, goods::Prices &data, host::Grid *grid, QComboBox *defaultLevel,
                  QLabel *hint, host::Boundary run, QObject *parent);

    /// Shows the working rows of the good and its default level; for review its stored prices.
    void Open(int goodCode, host::TFormMode mode);
    /// The working rows moved to another code.
    void MoveTo(int goodCode);
    /// Reads the titles of the levels anew; prices, what is being typed among them, and the chosen default stay.
    void ReloadTitles();
    /// Writes what the working rows do not hold yet: a price, and a default level that could not be stored.
    void Post();
    void SetReadOnly(bool readOnly);

    host::Refused CheckDefault() const;

signals:
    /// The user changed a price or the default level.
    void Changed();

private:
    host::Dataset &Rows() const { return m_data.CostLevel_Rows(m_side); }
    void ChooseDefault();
    void StoreDefault();
    void PostPrice();
    /// Fills the chooser of the default level; the index of the good's own.
    int FillLevels();
    void ShowHint();
    /// The user went to another row.
    void PostLeftRow();
    bool eventFilter(QObject *watched, QEvent *event) override;
    void StandOnPrice(int row);
    void EditPrice(int row);
    /// Enter in a price goes down the column, behind the last one to the default level.
    void NextPrice();

    goods::Prices::Side m_side;
    goods::Prices &m_data;
    host::Grid *m_grid;
    QComboBox *m_default;
    QLabel *m_hint;
    QString m_hintText;
    host::Boundary m_run;
    int m_good = 0;
    bool m_defaultStored = true; ///< the working rows know the level that is chosen
};
