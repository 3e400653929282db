#include "gooddetail/exit_narrowing.h"
#include "gooddetail/serial_dm.h"
#include "host/data/database_error.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"

#include <QLoggingCategory>

using namespace Qt::StringLiterals;

// The working rows of the enter and exit screens.

namespace {

Q_LOGGING_CATEGORY(details, "goods.details", QtInfoMsg)

const QString CommonTable = u"##EnterGoodDetailKardex"_s;
const QString OwnTable = u"#EnterGoodDetailKardex"_s;
/// Whoever makes it has the common table, as long as his connection lives.
const QString Claim = u"##EnterGoodDetailKardex_Claim"_s;

const QString EnterText = u"IF OBJECT_ID('tempdb..##EnterGoodDetailKardex') IS NOT NULL \n"
                          "         DROP TABLE ##EnterGoodDetailKardex \n"
                          "\n"
                          "CREATE TABLE ##EnterGoodDetailKardex(\n"
                          "           ID int IDENTITY(1,1) NOT NULL, \n"
                          "           DetailValueID int, \n"
                          "           StoreCode int, \n"
                          "           GoodCode int, \n"
                          "            DetailTitle1 nvarchar(100), \n"
                          "           DetailTitle2 nvarchar(100), \n"
                          "           DetailTitle3 nvarchar(100), \n"
                          "           DetailTitle4 nvarchar(100), \n"
                          "           DetailTitle5 nvarchar(100), \n"
                          "           Amount1 decimal(23, 9), \n"
                          "           Amount2 decimal(23, 9), \n"
                          "           TotalAmount decimal(23, 9), \n"
                          "           [Length] decimal(23, 9), \n"
                          "           Width decimal(23, 9), \n"
                          "           Amount3 decimal(23, 9), \n"
                          "           OperationType tinyint, \n"
                          "           OperationCode int, \n"
                          "           OperationRow int, \n"
                          "           ForeignOperationCode int, \n"
                          "           Tmp tinyint,\n"
                          "           Amount1_Ret decimal(23, 9), \n"
                          "           Amount2_Ret decimal(23, 9), \n"
                          "           Length_Ret decimal(23, 9),\n"
                          "           Width_Ret decimal(23, 9), \n"
                          "           Amount3_Ret decimal(23, 9)) \n"
                          "\n"
                          "SELECT * FROM ##EnterGoodDetailKardex"_s;

const QString ExitText =
    u"SELECT\n"
    "ID, DetailValueID, StoreCode, GoodCode, AnbarCode, DetailTitle1, DetailTitle2, DetailTitle3, DetailTitle4, "
    "DetailTitle5, \n"
    "Cast(Amount1 as float) as Amount1, Cast(Amount2 as float) as Amount2, Cast(TotalAmount as float) as TotalAmount, \n"
    "Length, Width, Cast(Amount3 as float) as Amount3, \n"
    "Cast(Amount1_Exit as float) as Amount1_Exit, Cast(Amount2_Exit as float) as Amount2_Exit, Cast(TotalAmount_Exit as "
    "float) as TotalAmount_Exit, Length_Exit, Width_Exit, \n"
    "Cast(Amount3_Exit as float) as Amount3_Exit, OperationType, OperationCode, OperationRow, \n"
    "ForeignOperationCode, ComIndex, Selected, Tmp\n"
    "FROM GoodDetailKardexExit_Temp "_s;

} // namespace

TSerial_DM::~TSerial_DM()
{
    try {
        GiveTableBack();
    } catch (const host::DatabaseError &error) {
        // The connection is gone, and the tables with it.
        qCWarning(details).noquote() << error.LogText();
    } catch (const std::exception &error) {
        qCWarning(details).noquote() << error.what();
    }
}

/// Making a table is one step on the server: of two desks one gets it.
bool TSerial_DM::ClaimCommonTable()
{
    tmp_QRY.Open(
        u"IF OBJECT_ID('tempdb..%1') IS NULL BEGIN BEGIN TRY CREATE TABLE %1 (Mark nvarchar(40)) INSERT INTO "
        "%1 (Mark) VALUES (%2) END TRY BEGIN CATCH PRINT ERROR_MESSAGE() END CATCH END SELECT Mark FROM %1"_s.arg(
            Claim, host::NQuotedStr(m_mark)));
    const bool mine = !tmp_QRY.IsEmpty() && tmp_QRY.Text(u"Mark") == m_mark;
    tmp_QRY.Close();
    return mine;
}

void TSerial_DM::EnterGoodDetail_Open()
{
    const bool first = m_enterTable.isEmpty();
    if (!first && host::Scalar(m_main, u"SELECT OBJECT_ID('tempdb..%1')"_s.arg(m_enterTable)).toInt() != 0)
        ForgetValues(u"1 = 1"_s);
    // Asked again each time: a connection that was lost has taken the claim along.
    if (m_claimed || first)
        m_claimed = ClaimCommonTable();
    m_enterTable = m_claimed ? CommonTable : OwnTable;
    QString text = EnterText;
    if (!m_claimed)
        text.replace(CommonTable, OwnTable);
    EnterGoodDetail_QRY.SetTable(m_enterTable, u"ID"_s);
    EnterGoodDetail_QRY.SetOrder({});
    EnterGoodDetail_QRY.Open(text);
    // From now on what is opened are the rows, not a table made anew.
    EnterGoodDetail_QRY.SetText(u"SELECT * FROM "_s + m_enterTable);
    EnterGoodDetail_QRY.SetOrder(u"ID"_s);
}

void TSerial_DM::GiveTableBack()
{
    if (m_enterTable.isEmpty())
        return;
    EnterGoodDetail_QRY.Close();
    ForgetValues(u"1 = 1"_s);
    QString text = u"DROP TABLE "_s + m_enterTable;
    if (m_claimed)
        text += u" DROP TABLE "_s + Claim;
    host::Exec(m_main, text);
    m_enterTable.clear();
    m_claimed = false;
}

void TSerial_DM::ReadyEnterRows()
{
    if (!EnterGoodDetail_QRY.IsOpen())
        EnterGoodDetail_QRY.Open();
}

void TSerial_DM::EnterGoodDetail_Refresh()
{
    EnterGoodDetail_QRY.Requery();
}

void TSerial_DM::WriteRow(const TEnterGoodDetail_Rec &row)
{
    host::Dataset &rows = EnterGoodDetail_QRY;
    rows.SetField(u"DetailValueID", row.DetailValueID);
    rows.SetField(u"StoreCode", row.StoreCode);
    rows.SetField(u"GoodCode", row.GoodCode);
    for (size_t i = 0; i < row.DetailTitle.size(); ++i)
        rows.SetField(QString(u"DetailTitle%1"_s.arg(i + 1)), row.DetailTitle[i]);
    rows.SetQuantity(u"Amount1", row.Amounts.Amount1);
    rows.SetQuantity(u"Amount2", row.Amounts.Amount2);
    rows.SetQuantity(u"TotalAmount", row.Amounts.TotalAmount);
    rows.SetQuantity(u"Length", row.Amounts.Length);
    rows.SetQuantity(u"Width", row.Amounts.Width);
    rows.SetQuantity(u"Amount3", row.Amounts.Amount3);
    rows.SetField(u"OperationType", row.OperationType);
    rows.SetField(u"OperationCode", row.OperationCode);
    rows.SetField(u"OperationRow", row.OperationRow);
    rows.SetField(u"ForeignOperationCode", row.ForeignOperationCode);
    if (!row.Returnable) {
        for (const QString &field :
             {u"Amount1_Ret"_s, u"Amount2_Ret"_s, u"Length_Ret"_s, u"Width_Ret"_s, u"Amount3_Ret"_s})
            if (!rows.Field(field).isNull())
                rows.SetField(field, QVariant());
        return;
    }
    rows.SetQuantity(u"Amount1_Ret", row.Returnable->Amount1);
    rows.SetQuantity(u"Amount2_Ret", row.Returnable->Amount2);
    rows.SetQuantity(u"Length_Ret", row.Returnable->Length);
    rows.SetQuantity(u"Width_Ret", row.Returnable->Width);
    rows.SetQuantity(u"Amount3_Ret", row.Returnable->Amount3);
}

void TSerial_DM::EnterGoodDetailRow_Insert(const TEnterGoodDetail_Rec &row)
{
    ReadyEnterRows();
    EnterGoodDetail_QRY.Append();
    WriteRow(row);
    EnterGoodDetail_QRY.SetField(u"Tmp", row.Tmp);
    EnterGoodDetail_QRY.Post();
}

void TSerial_DM::EnterGoodDetailRow_Update(const TEnterGoodDetail_Rec &row)
{
    ReadyEnterRows();
    EnterGoodDetail_QRY.Locate(u"ID", row.ID);
    EnterGoodDetail_QRY.Edit();
    WriteRow(row);
    EnterGoodDetail_QRY.Post();
}

/// Detail values that were made for rows which are about to go, and that no other row nor document has.
void TSerial_DM::ForgetValues(const QString &condition)
{
    m_host.detailValues.DeleteUnusedDetailValuesAmong(
        u"SELECT DetailValueID FROM %1 GROUP BY DetailValueID HAVING SUM(CASE WHEN %2 THEN 0 ELSE 1 END) = 0"_s.arg(
            m_enterTable, condition));
}

void TSerial_DM::RemoveRows(const QString &condition)
{
    host::Transaction transaction(m_main);
    ForgetValues(condition);
    host::Run(m_main, u"DELETE FROM %1 WHERE %2"_s.arg(m_enterTable, condition));
    transaction.Commit();
}

void TSerial_DM::EnterGoodDetailRow_Delete(int id)
{
    EnterGoodDetailRows_Delete({id});
}

void TSerial_DM::EnterGoodDetailRows_Delete(const QList<int> &ids)
{
    constexpr qsizetype InBlock = 1000;
    for (qsizetype at = 0; at < ids.size(); at += InBlock) {
        QStringList block;
        for (const int id : ids.mid(at, InBlock))
            block << QString::number(id);
        RemoveRows(u"ID IN (%1)"_s.arg(block.join(u',')));
    }
}

void TSerial_DM::EnterGoodDetailRow_DeleteAll(int storeCode, quint8 operationType, const QList<int> &keptValues)
{
    QStringList kept;
    for (const int value : keptValues)
        kept << QString::number(value);
    const QString but = kept.isEmpty() ? QString() : u" AND DetailValueID NOT IN (%1)"_s.arg(kept.join(u','));
    RemoveRows(u"StoreCode = %1 AND OperationType = %2"_s.arg(storeCode).arg(operationType) + but);
}

void TSerial_DM::ExitGoodDetail_Open(const host::TDocumentLine &line, const TExitNarrowing &typed)
{
    const QString narrowed = good_detail::NarrowingCondition(typed, line.UnitType);
    const QString rows = ExitText + u"\nWHERE "_s + m_host.detailMovements.ExitGoodDetails_Condition(line);
    ExitGoodDetail_QRY.Open(rows + (narrowed.isEmpty() ? QString() : u"\n AND "_s + narrowed) + u"\nORDER BY ID"_s);
}

void TSerial_DM::ExitGoodDetailRow_Update(int id, const host::TAmounts &exit, int foreignOperationCode)
{
    host::Dataset row(m_main);
    row.SetTable(u"GoodDetailKardexExit_Temp"_s, u"ID"_s);
    row.Open(u"SELECT * FROM GoodDetailKardexExit_Temp WHERE ID = "_s + QString::number(id));
    if (row.IsEmpty())
        return;
    row.Edit();
    row.SetQuantity(u"Amount1_Exit", exit.Amount1);
    row.SetQuantity(u"Amount2_Exit", exit.Amount2);
    row.SetQuantity(u"TotalAmount_Exit", exit.TotalAmount);
    row.SetQuantity(u"Length_Exit", exit.Length);
    row.SetQuantity(u"Width_Exit", exit.Width);
    row.SetQuantity(u"Amount3_Exit", exit.Amount3);
    row.SetField(u"ForeignOperationCode", foreignOperationCode);
    row.SetField(u"Selected", exit.Amount1 > 0 || exit.Amount2 > 0 || exit.TotalAmount > 0 || exit.Length > 0 ||
                                  exit.Width > 0 || exit.Amount3 > 0);
    row.Post();
}
