#pragma once

#include "data/goods/good_detail_types.h"
#include "host/screens/refusals.h"

#include <QWidget>

#include <memory>

class QAction;

namespace Ui {
class DetailsPage;
}

/// The tab of the good's detail types (serial, colour …), of which it carries at most five. What is added and taken off
/// here lasts when the good is saved. Once quantities are recorded for the details of a good, its types stay as they
/// are: the recorded values are told apart by them.
///
/// Keys on the page: F4 a new row, F7 the marked rows off, or the current one.
class DetailsPage : public QWidget
{
    Q_OBJECT

public:
    DetailsPage(host::Host &host, goods::GoodDetailTypes &data, const host::RuleRunner &run, QWidget *parent = nullptr);
    ~DetailsPage() override;

    /// Makes the working list of a new good: the members of the default category of detail types.
    void OpenNew(int goodCode);
    /// Makes the working list of an existing good: its own. The commands are there only where they may be changed.
    void OpenExisting(int goodCode, bool mayChange);
    /// The good got another code, and its working list with it.
    void MoveTo(int goodCode) { m_good = goodCode; }
    /// The detail types that the good was opened with, 0 for none.
    const std::array<int, 5> &Loaded() const { return m_loaded; }
    /// The types are those that the good was opened with.
    bool IsAsLoaded() const;
    bool HasRows() const { return !m_data.GoodDetails_QRY.IsEmpty(); }
    /// Refuses changed types of a good for which quantities were recorded while it was open.
    host::Refused CheckStillFree() const;

signals:
    /// The user added or took off a type.
    void Changed();

private:
    void Open(int goodCode, bool mayChange);
    std::array<int, 5> Now() const;
    void Refresh();
    /// The refusal with this text when quantities are recorded for the good's details.
    host::Refused RefuseRecorded(const QString &text) const;
    host::Refused RefuseWhen(bool recorded, const QString &text) const;
    host::Refused Add();
    host::Refused Delete();
    host::Refused DeleteAll();
    void AfterDeletion();

    host::Host &m_host;
    goods::GoodDetailTypes &m_data;
    std::unique_ptr<Ui::DetailsPage> m_ui;
    QList<QAction *> m_onRows; ///< the commands that need rows
    int m_good = 0;
    bool m_new = false;
    std::array<int, 5> m_loaded{};
};
