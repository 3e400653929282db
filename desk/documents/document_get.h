#pragma once

#include "desk/documents/document_lines.h"
#include "desk/documents/document_store.h"
#include "host/screens/base_get_new.h"

#include <functional>
#include <memory>

namespace Ui {
class DocumentGet;
}

namespace desk {

/// The editor of one document of any kind. The number is reserved while the screen is open; new documents follow one
/// another until Esc.
///
/// F2 goes to the field for goods, F6 opens the details of the line, F7 deletes it, F8 shows where its details came
/// from and went, F9 prints the lines.
class TDocument_Get_FRM : public host::TBaseGet_New_FRM
{
    Q_OBJECT

public:
    TDocument_Get_FRM(host::Host &host, const DocumentKind &kind, LineDetailScreens &screens);
    ~TDocument_Get_FRM() override;

    /// How a document is chosen that a return answers: on the list of documents; its code, 0 for none.
    using Chooser = std::function<int(const DocumentKind &kind)>;
    void SetChooser(Chooser chooser) { m_choose = std::move(chooser); }

protected:
    void Prepare() override;
    void Load() override;
    host::Refused MaySave() override;
    void BeforeChecks() override;
    std::vector<host::Check> Validate() override;
    void Write() override;
    void AfterWrite() override;
    QString PrepareRecoveryQuery() const override;
    QWidget *FirstControl() const override;
    host::Grid *PrintedGrid() const override;
    void FormClose() override;

private:
    void Show(const Document &document);
    void AddCommands();
    void TakeStore(int code);
    void TakeAnswers();
    void ChooseAnswers();
    void ShowAnswers();
    void LockHeader();
    void ShowHistory();
    Document Entered() const;
    /// What this desk keeps of details for the document that is leaving the screen.
    void Forget();
    host::Refused AnswersFault() const;
    host::Refused LinesFault();

    const DocumentKind &m_kind;
    DocumentStore m_store;
    std::unique_ptr<Ui::DocumentGet> m_ui;
    DocumentLinesPage *m_lines = nullptr;
    Chooser m_choose;
    Document m_read; ///< as it was read, or as a new one begins
    std::optional<Document> m_answered;
};

} // namespace desk
