#pragma once

#include "host/screens/refusals.h"
#include "screens/good_editor/opening_fields.h"

#include <QWidget>

#include <memory>

class BarcodeEdit;
class QComboBox;
class QPushButton;

namespace Ui {
class GeneralPage;
}

/// The first tab: what a good is called and where it belongs. Units and opening stock are `Opening()`.
class GeneralPage : public QWidget
{
    Q_OBJECT

public:
    /// `run` is the boundary of errors for what happens at once.
    GeneralPage(host::Host &host, TGood_DM &data, const host::Boundary &run, QWidget *parent = nullptr);
    ~GeneralPage() override;

    OpeningFields &Opening() { return *m_opening; }
    BarcodeEdit *BarCode1() const;
    host::NumericEdit *CodeEdit() const;
    QWidget *NameEdit() const;

    /// Reads the groups anew.
    void FillGroups();
    void Clear(int group);
    void Show(const TGoodInfoRec &rec);
    void Store(TGoodInfoRec &rec) const;

    int Code() const;
    /// Shows a code, also one with more digits than may be typed, which a save then refuses.
    void SetCode(int code);
    int Group() const;

    host::Refused CheckGroup() const;
    host::Refused CheckCodeGiven() const;
    host::Refused CheckCodeDigits() const;
    host::Refused CheckNameGiven() const;
    /// `code` is the good being edited.
    host::Refused CheckNameUnique(int code) const;
    /// Only asks: goods may share an index.
    host::Refused CheckIndexUnique(int code) const;

    /// Opens the list of opening rows.
    QPushButton *OpeningRowsButton() const;
    QString FullName() const;

signals:
    /// The user picked another group.
    void GroupPicked(int group);
    /// An opening quantity is another one.
    void Changed();

private:
    void ShowFullName();
    void SelectGroup(int group);

    host::Host &m_host;
    TGood_DM &m_data;
    std::unique_ptr<Ui::GeneralPage> m_ui;
    OpeningFields *m_opening;
};
