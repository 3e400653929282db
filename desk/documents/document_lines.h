#pragma once

#include "desk/documents/document_kinds.h"
#include "desk/documents/document_lines_model.h"
#include "desk/documents/good_scan.h"
#include "desk/documents/line_details.h"
#include "host/host.h"
#include "host/screens/refusals.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <optional>

namespace Ui {
class DocumentLines;
}
namespace host {
class Grid;
class NumericEdit;
} // namespace host

namespace desk {

class DocumentStore;

/// The lines of a document in its editor. One field takes whatever names a good; below the grid stand the inputs of the
/// current line, and what is typed into them is the line's at once.
///
/// A scanned barcode counts up and leaves the keys where they are; a typed code goes on to the quantity, from where
/// Enter leads over the price back to the field. A good with details has its quantity from them.
class DocumentLinesPage : public QWidget
{
    Q_OBJECT

public:
    /// Runs what a key or a click brings about: catches what is thrown and shows it.
    using Boundary = std::function<bool(const std::function<void()> &body)>;

    DocumentLinesPage(host::Host &host, LineDetailScreens &screens, DocumentStore &store, Boundary run,
                      QWidget *parent);
    ~DocumentLinesPage() override;

    /// Takes over the lines of a document; `answered` is what it returns.
    void Show(const Document &document, const std::optional<Document> &answered);
    void SetAnswered(const std::optional<Document> &answered, int code);
    /// The store of the document: new lines begin with it, and those that have it follow. False when the user would
    /// rather keep the details that were chosen in the former store, which is LinesStore().
    bool SetStore(int code, const QString &name);
    int LinesStore() const { return m_linesStore; }
    const QList<DocumentLine> &Lines() const { return m_lines.Lines(); }
    bool IsEmpty() const { return m_lines.IsEmpty(); }
    host::Grid *LinesGrid() const;

    void FocusScan();
    /// The details of the current line, in the module's screens.
    void OpenDetails();
    void DeleteLine();
    /// The current line as the details know it; nothing without one.
    std::optional<host::TDocumentLine> CurrentDetails() const;
    /// Takes what is typed for the store of the current line.
    void Resolve();
    /// What is still being typed beside the lines: a code that no Enter followed, a store that is none.
    host::Refused Unfinished() const;
    /// Brings the line to front for a fault in it.
    QWidget *StandOn(int row);

signals:
    void Changed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void BuildGrid();
    void BindInputs();
    int Current() const;
    DocumentLine NewLine(const DocumentGood &good) const;
    int LineOf(int goodCode) const;
    bool TracksDetails(const DocumentGood &good) const;
    host::TDocumentLine DetailsOf(const DocumentLine &line) const;
    bool EnterPressed(QObject *watched);

    void TakeScan();
    void TakeGood(const GoodScan &scan);
    void TakeSerial(const GoodScan &scan);
    bool InAnswered(const DocumentGood &good) const;
    void OpenDetailsOf(int row, bool isNew);
    /// Nothing came of what was begun on a line: a new one goes again.
    void GiveUp(int row, bool isNew);
    void SetAmounts(int row, const host::TAmounts &amounts);
    void Follow(DocumentLine &line, bool firstTyped) const;
    void Typed(host::NumericEdit *edit);
    /// Details that another store does not have.
    bool HasChosen(const DocumentLine &line) const;
    /// Asks before they are given up.
    void MoveLine(int row, int store, const QString &name);
    void MoveToStore(int row, int store, const QString &name);
    void Replace(int row, const DocumentLine &line);
    void ShowLine();
    void ShowTotal();
    void Tell(const QString &text);
    QString Scanned() const;
    /// What stands in the field was not answered yet.
    bool ScanPending() const;

    host::Host &m_host;
    LineDetailScreens &m_screens;
    DocumentStore &m_store;
    Boundary m_run;
    std::unique_ptr<Ui::DocumentLines> m_ui;
    DocumentLinesModel m_lines;
    const DocumentKind *m_kind = nullptr;
    int m_code = 0;
    int m_storeCode = 0;
    int m_linesStore = 0; ///< the last store of the document that was one: that of its lines
    QString m_storeName;
    int m_answersCode = 0;
    std::optional<Document> m_answered;
    QString m_refusedScan;  ///< stands in the field, but was answered already
    bool m_waits = false;   ///< … that something is missing above the lines
    bool m_showing = false; ///< the inputs are being filled
};

} // namespace desk
