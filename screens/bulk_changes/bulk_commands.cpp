#include "screens/bulk_changes/bulk_commands.h"

#include "data/goods/good_dm.h"
#include "host/data/database_error.h"
#include "host/data/sql_text.h"
#include "host/host.h"
#include "screens/bulk_changes/asset_type.h"
#include "screens/bulk_changes/bulk_order.h"
#include "screens/bulk_changes/bulk_report.h"
#include "screens/bulk_changes/group_discount.h"
#include "screens/bulk_changes/last_changes.h"
#include "screens/bulk_changes/price_preview.h"
#include "screens/bulk_changes/price_rows.h"
#include "screens/bulk_changes/update_price.h"

#include <QLoggingCategory>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

using goods::BulkResult;
using goods::GoodsScope;
using goods::PriceFate;

namespace bulk_changes {

namespace {

constexpr int FlashMilliseconds = 2000;

Q_LOGGING_CATEGORY(log, "goods.bulk")

} // namespace

int Commands::GoodsOf(const GoodsScope &scope)
{
    return scope.kind == goods::ScopeKind::All ? m_goods.Good_Count(scope.deniedTo)
                                               : static_cast<int>(scope.codes.size());
}

/// Tells how a change ended that lists no goods.
bool Commands::Finished(const BulkResult &result)
{
    if (result.outcome != BulkResult::Outcome::Done)
        return false;
    if (result.left > 0)
        TellLeft(result);
    else if (result.written == 0)
        m_host.messages.ShowMessage(u"کالایی تغییر نکرد: همه همین مقدار را داشتند."_s, host::MessageIcon::Information);
    else
        m_host.messages.ShowFlashMessage(u"عملیات با موفقیت انجام شد"_s, FlashMilliseconds);
    return result.written > 0;
}

void Commands::TellLeft(const BulkResult &result)
{
    m_host.messages.ShowMessage(u"%1 تغییر کرد. %2 همان‌گونه که بود ماند."_s.arg(
                                    GoodsText(result.written), GoodsText(result.left)),
                                host::MessageIcon::Information);
}

bool Commands::ChangePrices(const GoodsScope &scope)
{
    TGood_UpdatePrice_FRM question(m_host, m_goods);
    question.SetSubject(ScopeText(scope.kind) + u": "_s + GoodsText(GoodsOf(scope)));
    if (question.ShowModally() != QDialog::Accepted)
        return false;
    const auto close = qScopeGuard([this] {
        try {
            m_goods.BulkPrices_Close();
        } catch (const host::DatabaseError &error) {
            // A connection that is lost takes its working tables along; another one begins without.
            qCWarning(log).noquote() << "closing a preview of prices:" << error.LogText();
        }
    });
    {
        ProgressWindow progress(question.Title(), &m_owner);
        if (!m_goods.BulkPrices_Prepare(scope, question.Instruction(), progress.Callback()))
            return false;
    }
    return PreviewAndWrite(question.InstructionText());
}

bool Commands::PreviewAndWrite(const QString &title)
{
    BulkResult result;
    QSet<int> picked;
    {
        TPrice_Preview_FRM preview(m_host, m_goods, title);
        if (preview.ShowModally() != QDialog::Accepted)
            return false;
        result = preview.Result();
        picked = preview.WrittenOrLeft();
    }
    SendToScales(m_host, m_goods, result.change);
    if (result.left == 0)
        return Finished(result);
    if (!AfterWriting(
            m_host,
            u"قیمت‌ها ذخیره شد ولی فهرست کالاهای تغییر نکرده خوانده نشد."_s,
            [&] { m_goods.BulkPrices_GetAll(goods::BulkPrices::Rows::Staying); }))
        return Finished(result);
    ReportPrices(result, picked);
    return result.written > 0;
}

void Commands::ReportPrices(const BulkResult &result, const QSet<int> &picked)
{
    host::Dataset &rows = m_goods.BulkPrices_QRY;
    ComputedRows left(rows, PriceFields(rows), [&rows, &picked](int row) {
        const PriceFate fate = FateAt(rows, row);
        return (fate == PriceFate::ChangedMeanwhile || fate == PriceFate::GoodGone) &&
               picked.contains(rows.FieldAt(row, u"Code").toInt());
    });
    QList<host::GridColumn> columns = StayingColumns();
    columns[2].caption = u"قیمت در پیش‌نمایش"_s;
    TBulk_Report_FRM report(m_host, u"تغییر قیمت کالاها"_s,
                            u"قیمت %1 تغییر کرد. %2 زیر همان‌گونه که بود ماند."_s.arg(
                                GoodsText(result.written), GoodsText(result.left)),
                            left, columns);
    report.ShowModally();
}

bool Commands::ChangeDiscounts(const GoodsScope &scope)
{
    TDiscount_Edit_Group_FRM screen(m_host, m_goods);
    return screen.Change(scope, GoodsOf(scope)) && Finished(screen.Result());
}

bool Commands::ChangeAssetType(const GoodsScope &scope)
{
    TSelectedGoodSaveGoodType_FRM question(m_host);
    question.SetSubject(ScopeText(scope.kind) + u": "_s + GoodsText(GoodsOf(scope)));
    if (question.ShowModally() != QDialog::Accepted)
        return false;
    BulkResult result;
    {
        ProgressWindow progress(question.Title(), &m_owner);
        result = m_goods.AssetType_Apply(scope, question.GoodType(),
                                         Order(m_host, question.GoodTypeName(), progress.Callback()));
    }
    return Finished(result);
}

bool Commands::MayReplaceDetailTypes(const goods::BulkForecast &forecast)
{
    QString text = u"جزییات %1 با جزییات انتخاب شده جایگزین می‌شود."_s.arg(
        GoodsText(forecast.changing));
    if (forecast.same > 0)
        text += u"\n%1 هم‌اکنون همین جزییات را دارد."_s.arg(GoodsText(forecast.same));
    if (forecast.protectedOf > 0)
        text +=
            u"\n%1 تغییر نمی‌کند، زیرا برای جزییات آن گردش ثبت شده است."_s
                .arg(GoodsText(forecast.protectedOf));
    if (forecast.changing > 0)
        return m_host.messages.Ask(text + u"\nآیا ادامه می‌دهید؟"_s, false);
    m_host.messages.ShowMessage(text, host::MessageIcon::Information);
    return false;
}

bool Commands::ChangeDetailTypes(const GoodsScope &scope)
{
    host::MultibleParam wanted;
    wanted.Categories = true;
    const QString chosen = m_host.entities.Select_Entity_Multible_Param(host::TSoftwarePart::DetailTypes, wanted);
    if (chosen.isEmpty())
        return false;
    const QString types = host::CodeList(chosen);
    if (!MayReplaceDetailTypes(m_goods.DetailTypes_Forecast(scope, types)))
        return false;
    QStringList titles;
    for (const int type : host::Codes(types))
        titles << m_goods.GetDetailTypeTitle(type);
    BulkResult result;
    {
        ProgressWindow progress(u"تخصیص جزییات به کالاها"_s, &m_owner);
        result = m_goods.DetailTypes_Apply(scope, types, Order(m_host, titles.join(u"، "_s), progress.Callback()));
    }
    return Finished(result);
}

bool Commands::ShowLastChanges()
{
    TBulk_Changes_FRM list(m_host, m_goods);
    list.ShowModally();
    return list.Wrote();
}

} // namespace bulk_changes
