#pragma once

#include "desk/opening/opening_report_data.h"
#include "host/screens/base_dock.h"

#include <memory>

namespace Ui {
class OpeningReport;
}

namespace desk {

/// The opening stock list of the shop: all goods by store with their values, for looking through and for print (F9).
class TOpeningReport_FRM : public host::TBaseDock_FRM
{
    Q_OBJECT

public:
    explicit TOpeningReport_FRM(host::Host &host);
    ~TOpeningReport_FRM() override;

protected:
    void FormShow() override;
    void FormShown() override;
    void FormClose() override;
    bool FormKeyDown(QKeyEvent *event) override;
    host::SearchFrame *ListSearch() const override;
    host::Grid *PrintedGrid() const override;

private:
    void FillStores();
    void ShowStore();
    void Print();

    std::unique_ptr<Ui::OpeningReport> m_ui;
    OpeningReportData m_data;
    QList<OpeningReportData::StoreTotal> m_totals;
};

} // namespace desk
