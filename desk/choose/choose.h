#pragma once

#include "desk/application/goods_module.h"
#include "host/data/dataset.h"
#include "host/screens/base_dock.h"

#include <memory>

namespace Ui {
class Choose;
}

namespace desk {

/// Another part of the suite, as the module sees it: asks for goods in every way that the module offers and shows what
/// came back.
class TChoose_FRM : public host::TBaseDock_FRM
{
    Q_OBJECT

public:
    TChoose_FRM(host::Host &host, const GoodsModule &module);
    ~TChoose_FRM() override;

protected:
    void FormShow() override;

private:
    void SelectOne();
    void SelectSeveral();
    void EditGood();
    void ReviewGood();
    void NewGood();
    /// The code typed for editing and review; 0, having told the user, when there is none.
    int GoodCode();
    void ShowResult(const QString &call, const QString &codes);
    void ShowNothing(const QString &call, const QString &words);

    const GoodsModule &m_module;
    std::unique_ptr<Ui::Choose> m_ui;
    host::Dataset m_result;
};

} // namespace desk
