#include "data/goods/opening_copy.h"

#include "host/data/database_error.h"
#include "host/data/persian_text.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace goods {

namespace {

constexpr auto Part = host::TSoftwarePart::OpeningStock;

bool SameRows(const QList<TGoodFirstAsset_Rec> &a, const QList<TGoodFirstAsset_Rec> &b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), SameOpeningRow);
}

QString Shown(host::Quantity amount)
{
    return host::PersianDigits(host::GroupDigits(host::QuantityToText(amount)).replace(u',', u'٬').replace(u'.', u'٫'));
}

/// What another desk has made of the good, so that its rows can be told from those on the screen.
QString ChangedElsewhere(const QSqlDatabase &main, int goodCode)
{
    QStringList rows;
    for (host::Query stored(main,
                            u"Select a.Amount1,s.Name from GoodFirstAsset as a inner join Stores as s on "
                            "s.Code=a.StoreCode where a.tmp=0 and a.GoodCode=%1 order by a.Radif"_s.arg(goodCode));
         !stored.Eof(); stored.Next())
        rows << u"%1: %2"_s.arg(stored.Text(u"Name"), Shown(stored.Number(u"Amount1")));
    return u"موجودی اول دوره این کالا در جای دیگری تغییر کرده است و اکنون چنین ثبت شده است:\n%1\nچیزی ذخیره نشد؛ کالا "
           "را دوباره باز کنید."_s.arg(rows.isEmpty() ? u"بدون موجودی"_s : rows.join(u'\n'));
}

} // namespace

bool SameOpeningRow(const TGoodFirstAsset_Rec &a, const TGoodFirstAsset_Rec &b)
{
    return a.StoreCode == b.StoreCode && a.Radif == b.Radif && a.Comment == b.Comment &&
           SameAmounts({a.Amount1, a.Amount2}, {b.Amount1, b.Amount2});
}

void OpeningCopy::TakeNumber()
{
    if (m_number != 0)
        return;
    m_entities.ReleaseAbandonedCodes();
    QSet<int> taken;
    for (host::Query codes(m_data.OpeningConnection(),
                           u"Select Code from CodeLock_TBL where Status="_s + QString::number(static_cast<int>(Part)));
         !codes.Eof(); codes.Next())
        taken << codes.Int(u"Code");
    int number = 1;
    while (taken.contains(number) || !m_entities.ReserveCode(Part, number))
        ++number;
    m_number = number;
}

void OpeningCopy::Begin(int goodCode)
{
    TakeNumber();
    host::Transaction transaction(m_data.OpeningConnection());
    m_data.FirstAsset_DeleteTemp(Key());
    if (goodCode != 0) {
        m_data.FirstAsset_FillTemp(goodCode);
        m_data.GoodFirstAsset_UpdateAllGoodCodes(Key(), goodCode);
    }
    m_saved = goodCode == 0 ? QList<TGoodFirstAsset_Rec>() : m_data.FirstAsset_Rows(Key(), true);
    transaction.Commit();
    m_rows = m_saved;
    m_ofNewGood = goodCode == 0;
    m_numbers.clear();
    for (const TGoodFirstAsset_Rec &row : std::as_const(m_rows))
        m_numbers << row.Radif;
}

void OpeningCopy::End()
{
    if (m_number != 0)
        m_data.FirstAsset_DeleteTemp(Key());
    m_saved.clear();
    m_rows.clear();
    m_numbers.clear();
}

bool OpeningCopy::IsChanged() const
{
    return !SameRows(m_rows, m_saved);
}

UnitAmounts OpeningCopy::Totals() const
{
    UnitAmounts totals;
    m_data.GoodFirstAsset_GetAmount(Key(), totals.first, totals.second);
    return totals;
}

int OpeningCopy::NextNumber() const
{
    return m_numbers.isEmpty() ? 1 : *std::max_element(m_numbers.cbegin(), m_numbers.cend()) + 1;
}

int OpeningCopy::NewNumber()
{
    return std::max(m_data.GoodFirstAsset_GetNewCode(Key()), NextNumber());
}

QString OpeningCopy::SavedNumbers(int goodCode)
{
    return u"Select Radif as OperationRow, GoodCode from GoodFirstAsset where tmp=0 and GoodCode="_s +
           QString::number(goodCode);
}

QList<int> OpeningCopy::GoneNumbers() const
{
    QSet<int> gone = m_numbers;
    for (const TGoodFirstAsset_Rec &row : m_rows)
        gone.remove(row.Radif);
    QList<int> numbers(gone.cbegin(), gone.cend());
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

void OpeningCopy::Refresh()
{
    m_rows = m_data.FirstAsset_Rows(Key(), true);
    for (const TGoodFirstAsset_Rec &row : std::as_const(m_rows))
        m_numbers << row.Radif;
}

void OpeningCopy::Insert(const TGoodFirstAsset_Rec &row)
{
    TGoodFirstAsset_Rec mine = row;
    mine.GoodCode = Key();
    host::Transaction transaction(m_data.OpeningConnection());
    m_data.GoodFirstAsset_GetByID(Key(), mine.Radif);
    m_data.GoodFirstAsset_Insert(mine);
    transaction.Commit();
    Refresh();
}

void OpeningCopy::Update(TGoodFirstAsset_Rec row)
{
    row.GoodCode = Key();
    m_data.GoodFirstAsset_GetByID(Key(), row.Radif);
    m_data.GoodFirstAsset_Update(row);
    Refresh();
}

void OpeningCopy::Delete(int number)
{
    const QString row = u" and Radif="_s + QString::number(number);
    const QSqlDatabase &main = m_data.OpeningConnection();
    host::Transaction transaction(main);
    // The deletion names no good: while it runs, no other good has a working copy with this row.
    host::Run(main, u"Update GoodFirstAsset with (holdlock) set tmp=2 where tmp=1"_s + row + u" and GoodCode<>"_s +
                        QString::number(Key()));
    m_data.GoodFirstAsset_Delete(number);
    host::Run(main, u"Update GoodFirstAsset set tmp=1 where tmp=2"_s + row);
    transaction.Commit();
    Refresh();
}

void OpeningCopy::SetOnlyRow(int store, const UnitAmounts &amounts)
{
    const bool had = m_rows.size() == 1;
    const QString comment = had ? m_rows.first().Comment : QString();
    const bool given = amounts.first != 0 || amounts.second != 0;
    host::Transaction transaction(m_data.OpeningConnection());
    // The save of a good that fails later takes the row back, and its editor goes on from what was there before.
    host::Transaction::WhenEnded(m_data.OpeningConnection(),
                                 [this, rows = m_rows, numbers = m_numbers](bool committed) {
                                     m_written = false;
                                     if (committed)
                                         return;
                                     m_rows = rows;
                                     m_numbers = numbers;
                                 });
    const int number = had || !given ? m_rows.value(0).Radif : NextNumber();
    m_data.FirstAsset_DeleteTemp(Key());
    if (given)
        m_data.GoodFirstAsset(Key(), QString::number(store), host::QuantityToText(amounts.first),
                              host::QuantityToText(amounts.second));
    if (given && (number != 1 || !comment.isEmpty()))
        host::Run(m_data.OpeningConnection(),
                  u"Update GoodFirstAsset set Radif=%1,Comment=%2 where tmp=1 and GoodCode=%3"_s.arg(
                      QString::number(number), comment.isEmpty() ? u"NULL"_s : host::NQuotedStr(comment),
                      QString::number(Key())));
    Refresh();
    m_written = true;
    transaction.Commit();
}

void OpeningCopy::CheckSaved(int goodCode)
{
    if (m_ofNewGood)
        return;
    // Two desks that save the same good read its rows one after the other.
    host::Exists(m_data.OpeningConnection(),
                 u"Select Code from GoodInf with (updlock, holdlock) where Code="_s + QString::number(goodCode));
    if (!SameRows(m_data.FirstAsset_Rows(goodCode, false), m_saved))
        throw host::DatabaseError(ChangedElsewhere(m_data.OpeningConnection(), goodCode));
}

void OpeningCopy::Save(int goodCode, const std::function<void()> &judge)
{
    host::Transaction transaction(m_data.OpeningConnection());
    CheckSaved(goodCode);
    // Nobody else touches them, unless this desk was taken for dead and its number given to another one.
    if (!m_written && !SameRows(m_data.FirstAsset_Rows(Key(), true), m_rows))
        throw host::DatabaseError(
            u"این سیستم مدتی از پایگاه داده دور بوده و موجودی اول دوره ای که در این فرم وارد شده بود کنار گذاشته شده است.\n"
            "چیزی ذخیره نشد؛ کالا را دوباره باز کنید."_s);
    if (judge)
        judge();
    m_data.GoodFirstAsset_UpdateAllGoodCodes(goodCode, Key());
    m_data.FirstAsset_SaveTemp(goodCode);
    transaction.Commit();
}

} // namespace goods
