#include "bench/clerk_work.h"

#include "bench/detail_work.h"
#include "bench/report.h"
#include "bench/shop.h"
#include "desk/documents/document_store.h"
#include "host/controls/grid.h"
#include "host/data/query.h"
#include "screens/good_editor/good_get.h"
#include "screens/goods_list/good_list.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QtWidgets>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

constexpr int FirstRows = 200; // a block
constexpr int Lines = 10;

const QString ListStatement =
    u"Exec GoodInf_List_SP @GrpCode = NULL,@ManageType = 1,@UserCode = 1,"
    "@RequestedCol='Code,Name,Mogodi2,Mogodi,UnitName1,UnitName2,Cost1,Cost2,Cost3,Cost4,t1,t2,t3,AbbName,SMSCode,"
    "Position,MinAva,AvaBgPrd,CostBgPrd,UserCreated,CreatedDateTime,ConsumerPrice,UserModified,ModifiedDateTime,"
    "Comment',@GoodExistType = 0"_s;

void Expect(bool held, const char *what)
{
    if (!held)
        throw std::runtime_error(what);
}

/// The driver alone; up to `most` rows are read, value by value.
void Raw(const QSqlDatabase &connection, const QString &text, int most = 0)
{
    QSqlQuery query(connection);
    query.setForwardOnly(true);
    if (!query.exec(text))
        throw std::runtime_error(query.lastError().text().toStdString());
    for (int row = 0; row < most && query.next(); ++row)
        for (int column = 0; column < query.record().count(); ++column)
            query.value(column);
}

void RawInTransaction(QSqlDatabase connection, const QString &text)
{
    Expect(connection.transaction(), "no transaction began");
    Raw(connection, text);
    Expect(connection.commit(), "a transaction was not committed");
}

} // namespace

class Clerk::Screens
{
public:
    explicit Screens(Shop &shop)
        : m_shop(shop), m_details(shop.Host()), m_good(shop.Data().CheckBarcodeCode(Shop::Barcode(shop.size() - 5))),
          m_editor(shop.Host())
    {
        host::Exec(Main(), u"CREATE TABLE BenchRows (ID int IDENTITY(1,1) NOT NULL PRIMARY KEY, Serial nvarchar(50), "
                           "Good int, Amount decimal(23,9))"_s);
    }

    void OpenFirst()
    {
        NewList();
        OpenList();
    }
    void NewList() { m_list = std::make_unique<TGood_List_FRM>(m_shop.Host(), host::TFormMode::DockedList); }
    void CloseList()
    {
        if (m_list)
            m_list->done(QDialog::Rejected);
    }
    void ForgetList() { m_list.reset(); }
    void OpenList()
    {
        Expect(m_list->ShowDocked(), "the goods list did not open");
        QCoreApplication::processEvents();
        m_list->grab();
    }
    void RawList() const { Raw(m_shop.Host().DM.FDConnection1, ListStatement, FirstRows); }
    void RawFirstList() const
    {
        const QString name = u"bench.raw"_s;
        {
            QSqlDatabase own = QSqlDatabase::cloneDatabase(m_shop.Host().DM.FDConnection1, name);
            Expect(own.open(), "no connection was made");
            Raw(own, ListStatement, FirstRows);
        }
        QSqlDatabase::removeDatabase(name);
    }
    void WholeList()
    {
        NewList();
        OpenList();
        auto *grid = m_list->findChild<host::Grid *>(u"GoodListDB_GRD"_s);
        while (!grid->IsComplete())
            QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 1);
    }
    double TypeSearch() const
    {
        auto *edit = m_list->findChild<QLineEdit *>(u"Text_EDT"_s);
        auto *grid = m_list->findChild<host::Grid *>(u"GoodListDB_GRD"_s);
        edit->setFocus();
        double slowest = 0;
        for (const QChar letter : u"شامپو مدل 99"_s) {
            slowest = std::max(slowest, Timed([&] {
                                   QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(letter));
                                   QCoreApplication::sendEvent(edit, &press);
                                   QCoreApplication::processEvents();
                                   grid->viewport()->grab();
                               }));
        }
        Expect(!grid->IsEmpty() && grid->RowCount() < m_shop.size(), "the search found nothing, or everything");
        return slowest;
    }

    void OpenGood() { Expect(m_editor.OpenRecord(m_good, host::TFormMode::Edit), "the editor did not open"); }
    void RawGood() const { Raw(Main(), u"SELECT * FROM GoodInf WHERE Code = %1"_s.arg(m_good), 1); }
    void ChangeGood()
    {
        OpenGood();
        m_editor.findChild<QLineEdit *>(u"Weight_EDT"_s)->setText(QString::number(++m_saves));
    }
    void SaveGood()
    {
        m_editor.Save();
        if (m_editor.isVisible())
            m_editor.done(0);
    }
    void CheckSaved() const
    {
        const QVariant saved = host::Scalar(Main(), u"SELECT Weight FROM GoodInf WHERE Code = %1"_s.arg(m_good));
        Expect(m_saves == 0 || saved.toInt() == m_saves, "the editor did not save");
    }
    void RawSave() const
    {
        RawInTransaction(Main(), u"UPDATE GoodInf SET MinAva = MinAva + 1 WHERE Code = %1"_s.arg(m_good));
    }

    void BeginPurchase()
    {
        m_details.Data().EnterGoodDetail_Open();
        m_purchase = DetailWork::Line(DetailWork::Purchase, ++m_code);
    }
    void EnterSerials()
    {
        m_details.Enter(m_purchase, m_serial, DetailWork::Range);
        m_serial += DetailWork::Range;
    }
    void SaveSerials()
    {
        m_details.Keep(m_purchase);
        m_details.SaveDocument(m_purchase);
    }
    void RawSerials() const
    {
        QStringList digits;
        for (int digit = 0; digit < 10; ++digit)
            digits << u"SELECT %1 AS n"_s.arg(digit);
        const QString ten = u"(%1) AS "_s.arg(digits.join(u" UNION ALL "_s));
        RawInTransaction(
            Main(), u"INSERT INTO BenchRows (Serial, Good, Amount) SELECT CAST(a.n * 1000 + b.n * 100 + c.n * 10 + "
                    "d.n AS nvarchar(50)), 1, 1 FROM "_s +
                        ten + u"a, "_s + ten + u"b, "_s + ten + u"c, "_s + ten + u'd');
    }

    void SaveDocument() { desk::DocumentStore(m_shop.Host()).Save(m_document); }
    void WriteDocument()
    {
        m_document = {};
        m_document.Kind = DetailWork::Purchase;
        m_document.Code = ++m_code;
        m_document.Date = u"1405/09/01"_s;
        m_document.StoreCode = 1;
        host::Query goods(Main(), u"SELECT TOP %1 Code FROM GoodInf ORDER BY Code"_s.arg(Lines));
        for (; !goods.Eof(); goods.Next()) {
            desk::DocumentLine line;
            line.OperationRow = static_cast<int>(m_document.Lines.size()) + 1;
            line.Good.Code = goods.Int(0);
            line.StoreCode = 1;
            line.Amount1 = 5;
            line.Price = 1000;
            m_document.Lines << line;
        }
    }
    void RawDocument() const
    {
        QStringList rows;
        for (int row = 0; row < Lines; ++row)
            rows << u"(N'', %1, 5)"_s.arg(row);
        RawInTransaction(Main(), u"INSERT INTO BenchRows (Serial, Good, Amount) VALUES "_s + rows.join(u", "));
    }

private:
    const QSqlDatabase &Main() const { return m_shop.Host().DM.ADOConnection1; }

    Shop &m_shop;
    std::unique_ptr<TGood_List_FRM> m_list;
    DetailWork m_details;
    int m_good;
    int m_saves = 0;
    int m_code = 1000; ///< documents behind those of the demo shop
    qint64 m_serial = 1000001;
    host::TDocumentLine m_purchase = DetailWork::Line(DetailWork::Purchase, 0);
    desk::Document m_document;
    TGood_Get_FRM m_editor; ///< kept, as the desk keeps it
};

Clerk::Clerk(Shop &shop) : m_screens(std::make_unique<Screens>(shop))
{}

Clerk::~Clerk() = default;

std::vector<ClerkWork> Clerk::Works() const
{
    Screens *s = m_screens.get();
    const QString serials = u"%1 serials, "_s.arg(DetailWork::Range);
    constexpr double ListLimit = 300;
    return {
        {u"goods list, first opening of a desk, first rows painted"_s,
         3,
         ListLimit,
         [s] { s->ForgetList(); },
         [s] { s->OpenFirst(); },
         [s] { s->RawFirstList(); },
         {}},
        {u"goods list, opened again, first rows painted"_s,
         5,
         ListLimit,
         [s] { s->CloseList(); },
         [s] { s->OpenList(); },
         [s] { s->RawList(); },
         {}},
        {u"goods list, opened, until its last row is there"_s, 1, 0, {}, [s] { s->WholeList(); }, {}, {}},
        {u"search in the goods list, slowest keystroke"_s, 1, 50, {}, {}, {}, [s] { return s->TypeSearch(); }},
        {u"a good, opened in the editor"_s,
         5,
         0,
         [s] { s->CloseList(); },
         [s] { s->OpenGood(); },
         [s] { s->RawGood(); },
         {}},
        {u"a good, saved"_s,
         5,
         0,
         [s] { s->CheckSaved(), s->ChangeGood(); },
         [s] { s->SaveGood(); },
         [s] { s->RawSave(); },
         {}},
        {serials + u"entered as a range and judged"_s,
         3,
         0,
         [s] { s->CheckSaved(), s->BeginPurchase(); },
         [s] { s->EnterSerials(); },
         [s] { s->RawSerials(); },
         {}},
        {serials + u"kept and saved with their document"_s,
         3,
         0,
         [s] { s->BeginPurchase(), s->EnterSerials(); },
         [s] { s->SaveSerials(); },
         [s] { s->RawSerials(); },
         {}},
        {u"a document of %1 lines, saved"_s.arg(Lines),
         5,
         0,
         [s] { s->WriteDocument(); },
         [s] { s->SaveDocument(); },
         [s] { s->RawDocument(); },
         {}},
    };
}

} // namespace bench
