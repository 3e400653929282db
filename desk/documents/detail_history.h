#pragma once

#include "desk/documents/detail_history_data.h"
#include "host/screens/base_dock.h"

#include <memory>

namespace Ui {
class DetailHistory;
}

namespace desk {

/// Where the unit behind a serial came from and where it went. Opened on a serial, on a document's line, or empty.
///
/// Enter in the search finds; Down goes into what was found, whose movements stand below. Of a unit that was divided,
/// or cut from another, the whole tree stands between them: Enter goes to a unit of it.
class TDetailHistory_FRM : public host::TBaseDock_FRM
{
    Q_OBJECT

public:
    explicit TDetailHistory_FRM(host::Host &host);
    ~TDetailHistory_FRM() override;

    /// The next opening shows the details of this line instead of waiting for a serial.
    void SetLine(const host::TDocumentLine &line) { m_line = line; }

protected:
    void FormShow() override;
    void FormClose() override;
    host::Grid *PrintedGrid() const override;
    bool FormKeyDown(QKeyEvent *event) override;

private:
    void Find();
    void ShowValues();
    void ShowMovements();
    void GoTo(int detailValueId);

    std::unique_ptr<Ui::DetailHistory> m_ui;
    DetailHistoryData m_data;
    std::optional<host::TDocumentLine> m_line;
};

} // namespace desk
