#include "screens/bulk_changes/bulk_order.h"

#include "data/goods/bulk_journal.h"
#include "data/goods/good_scales.h"
#include "host/controls/number_text.h"
#include "host/data/database_error.h"
#include "host/host.h"
#include "rules/stamp.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace bulk_changes {

namespace {

constexpr int ShownAfterMilliseconds = 500;
constexpr int Manager = 1; // TUserInfo::ManageType

void ToScales(const host::Host &host, const std::function<void()> &send)
{
    AfterWriting(host, u"قیمت‌ها ذخیره شد ولی به ترازو ارسال نشد."_s, [&] {
        if (host.scales.Enabled())
            send();
    });
}

} // namespace

ProgressWindow::ProgressWindow(const QString &title, QWidget *parent) : m_window(title, u"انصراف Esc"_s, 0, 0, parent)
{
    m_window.setObjectName(u"Bulk_PRG"_s);
    m_window.setWindowTitle(title);
    m_window.setWindowModality(Qt::ApplicationModal);
    m_window.setMinimumDuration(ShownAfterMilliseconds);
    m_window.setAutoReset(false);
    m_window.setAutoClose(false);
    m_window.reset(); // it would show itself before anything is reported
}

goods::BulkProgress ProgressWindow::Callback()
{
    return [this](int done, int total) {
        m_window.setMaximum(qMax(total, 1));
        const bool wasShown = m_window.isVisible();
        m_window.setValue(qMin(done, total));
        if (!wasShown && m_window.isVisible())
            QCoreApplication::processEvents(); // painted before the next step, which may be a long one
        return !m_window.wasCanceled();
    };
}

bool AfterWriting(const host::Host &host, const QString &failed, const std::function<void()> &body)
{
    try {
        body();
        return true;
    } catch (const host::DatabaseError &error) {
        host.messages.ShowMessage(failed + u'\n' + error.Text(), host::MessageIcon::Warning);
        return false;
    }
}

void SendToScales(const host::Host &host, goods::BulkJournal &changes, int change)
{
    if (change != 0)
        ToScales(host, [&] { changes.BulkChange_SendToScales(change); });
}

void SendToScales(const host::Host &host, goods::Scales &scales, int good, int level)
{
    ToScales(host, [&] { scales.SendChangesToScale(QList<int>{good}, level); });
}

int DeniedTo(const host::Host &host)
{
    const host::TUserInfo &user = host.settings.UserInfo();
    return user.ManageType == Manager ? 0 : user.Code;
}

goods::BulkOrder Order(const host::Host &host, const QString &title, const goods::BulkProgress &progress)
{
    const host::TUserInfo &user = host.settings.UserInfo();
    return {title, goods::StampUser(user.Name, user.Code), host.clock.NowShamsiDate(), host.clock.NowTime(), progress};
}

QString GoodsText(int goods)
{
    return u"%1 کالا"_s.arg(host::DisplayNumber(QString::number(goods)));
}

QString ScopeText(goods::ScopeKind kind)
{
    switch (kind) {
    case goods::ScopeKind::Marked:
        return u"موارد انتخابی"_s;
    case goods::ScopeKind::NotMarked:
        return u"موارد غیر انتخابی"_s;
    case goods::ScopeKind::Listed:
        return u"تمامی موارد موجود در لیست"_s;
    case goods::ScopeKind::File:
        return u"ردیف‌های فایل"_s;
    case goods::ScopeKind::All:
        break;
    }
    return u"تمامی کالاها"_s;
}

QString KindText(goods::BulkKind kind)
{
    switch (kind) {
    case goods::BulkKind::Prices:
        return u"قیمت"_s;
    case goods::BulkKind::Discounts:
        return u"تخفیف"_s;
    case goods::BulkKind::AssetType:
        return u"نوع کالا (دارایی)"_s;
    case goods::BulkKind::Import:
        return u"ورود از فایل"_s;
    case goods::BulkKind::DetailTypes:
        break;
    }
    return u"جزییات"_s;
}

QString FateText(goods::PriceFate fate)
{
    switch (fate) {
    case goods::PriceFate::Changes:
        return {};
    case goods::PriceFate::SamePrice:
        return u"قیمت جدید همان قیمت فعلی است"_s;
    case goods::PriceFate::NoSource:
        return u"چنین قیمتی برای این کالا ثبت نشده است"_s;
    case goods::PriceFate::BelowZero:
        return u"قیمت جدید کمتر از صفر می‌شود"_s;
    case goods::PriceFate::TooLarge:
        return u"قیمت جدید بزرگتر از حد مجاز می‌شود"_s;
    case goods::PriceFate::GoodGone:
        return u"کالا حذف شده است"_s;
    case goods::PriceFate::RoundedAway:
        return u"با گرد کردن، قیمتی باقی نمی‌ماند"_s;
    case goods::PriceFate::ChangedMeanwhile:
        break;
    }
    return u"کاربر دیگری در این فاصله قیمت را تغییر داده است"_s;
}

} // namespace bulk_changes
