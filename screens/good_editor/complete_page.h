#pragma once

#include "data/goods/good_dm.h"
#include "host/screens/refusals.h"
#include "screens/good_editor/barcode_fields.h"

#include <QWidget>

#include <memory>

namespace Ui {
class CompletePage;
}

/// The tab of everything that completes a good: sizes, place, short codes, tags, remark and the further barcodes.
class CompletePage : public QWidget
{
    Q_OBJECT

public:
    CompletePage(host::Host &host, TGood_DM &data, const host::RuleRunner &run, QWidget *parent = nullptr);
    ~CompletePage() override;

    /// The edits of barcodes 2 to 6, after `first`.
    BarcodeFields::Edits BarcodeEdits(BarcodeEdit *first) const;
    QWidget *BarcodesPanel() const;

    /// Reads tags and asset classes anew.
    void FillLists();
    void Clear();
    void Show(const TGoodInfoRec &rec);
    void Store(TGoodInfoRec &rec) const;
    /// The screen closes: the keyboard is left as by leaving the focused edit.
    void GiveKeyboardBack();

    /// Applies the percent rules of the focused field.
    host::Refused LeaveFocused();
    /// The rule of the discount percent. The edits of own tax and toll percents share it, as they always did.
    host::Refused LeaveOffPercent();
    /// `code` is the good being edited.
    host::Refused CheckSmsCode(int code) const;
    host::Refused CheckSizes() const;
    host::Refused CheckUniqueCode(int code) const;

    void SetReadOnly(bool readOnly);

signals:
    /// The user changed the tags.
    void Changed();

private:
    host::Refused LeavePos();
    QString ShownPos() const;

    host::Host &m_host;
    TGood_DM &m_data;
    std::unique_ptr<Ui::CompletePage> m_ui;
    /// The visitor's percent as it was shown; a good of before may have none.
    QString m_pos;
};
