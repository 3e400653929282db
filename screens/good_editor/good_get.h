#pragma once

#include "host/screens/base_get_new.h"
#include "screens/good_editor/code_proposal.h"
#include "screens/good_editor/good_validation.h"
#include "screens/opening_stock/opening_details.h"

#include <memory>

namespace Ui {
class TGood_Get_FRM;
}

/// The screen on which one good is created (mode 2), edited (3) or looked at (4): six tabs, one class each. The shell
/// orders them: it prepares and loads, says in which order is checked and written, and owns the keys of the whole
/// screen.
class TGood_Get_FRM : public host::TBaseGet_New_FRM
{
    Q_OBJECT

public:
    explicit TGood_Get_FRM(host::Host &host);
    ~TGood_Get_FRM() override;

    /// The tab that the next opening shows; 0, the first, unless set.
    void SetOpeningPage(int index) { m_openingPage = index; }
    /// How the details of opening rows are entered; without it their quantities are only typed.
    void SetDetailEntry(DetailEntry entry) { m_openingDetails.SetEntry(std::move(entry)); }
    /// The titles of price levels were changed here since the screen was opened; whoever shows them reads them anew.
    bool PriceTitlesChanged() const { return m_priceTitlesChanged; }

protected:
    /// The opening text of a new good is the code of the group that is preset.
    void Prepare() override;
    void Load() override;
    host::Refused MaySave() override;
    void BeforeChecks() override;
    std::vector<host::Check> Validate() override;
    void Write() override;
    void AfterWrite() override;
    void SetReadOnly(bool readOnly) override;
    QWidget *FirstControl() const override;
    QString PrepareRecoveryQuery() const override;
    void FormShow() override;
    void FormShown() override;
    void FormClose() override;

private:
    void BuildPages();
    void BindPages();
    void BindLevelTitles();
    /// Brings a tab to the front, counted among those that are shown.
    void ShowTab(int number);
    void ProposeCode(int group);
    /// The good got another code, and its working rows with it.
    void MoveWorkingRows(int code);
    void OpenPhotos();
    host::Refused TakeTypedCode();
    void RunRule(const std::function<host::Refused()> &rule);
    /// The good as the controls have it.
    TGoodInfoRec Entered() const;
    void BindOpening();
    void BeginOpening(int good);
    void ApplyOpeningLock();
    void ShowOpeningRows();
    void OpenOpeningRows();
    /// What is typed for the only row goes into the working copy, for the list to show it.
    void TypedRowIntoCopy();
    void EnterOpeningDetails();
    void OpeningStoreChanged();
    void SetDetailStore(int store);
    goods::OpeningGood OpeningGood() const;
    void DiscardWorkingRows();
    bool IsNew() const { return Mode() == host::TFormMode::New; }
    /// What the working rows stand under: for a new good the code it has been given so far.
    int WorkingCode() const { return IsNew() ? m_code.Current() : Key().toInt(); }

    std::unique_ptr<Ui::TGood_Get_FRM> m_ui;
    TGood_DM m_data;
    CodeProposal m_code;
    goods::OpeningCopy m_openingRows;
    OpeningDetails m_openingDetails;
    bool m_openingFixed = false; ///< by the period, or by documents
    int m_detailStore = 0;       ///< where the entered details of the only row stand
    int m_detailPicker = 0;      ///< and the store that was chosen for the good then
    GeneralPage *m_general = nullptr;
    CostLevelPage *m_prices = nullptr;
    DetailsPage *m_details = nullptr;
    CompletePage *m_complete = nullptr;
    DiscountPage *m_discounts = nullptr;
    class CategoryPage *m_categories = nullptr;
    BarcodeFields *m_barcodes = nullptr;
    QPushButton *m_picture = nullptr;
    QPushButton *m_discountTitles = nullptr;
    QPushButton *m_priceTitles = nullptr;
    std::unique_ptr<GoodValidation> m_validation;
    /// The good as it was loaded: what no control shows is written back as it was.
    TGoodInfoRec m_loaded;
    /// And what the controls gave back of it before anything was entered.
    TGoodInfoRec m_untouched;
    int m_openingPage = 0;
    bool m_priceTitlesChanged = false;
    /// The code that was asked for, when the good had to be saved under another one.
    int m_replacedCode = 0;
};
