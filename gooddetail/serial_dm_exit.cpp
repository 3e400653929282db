#include "gooddetail/serial_dm.h"
#include "host/data/sql_text.h"

using namespace Qt::StringLiterals;

// What goes out of the working rows of the exit screen.

namespace {

const QString Rows = u" FROM GoodDetailKardexExit_Temp WHERE "_s;

host::TAmounts AmountsOf(const host::Query &row, const QString &suffix)
{
    const auto amount = [&](QStringView field) { return row.Number(field.toString() + suffix); };
    return {amount(u"Amount1"), amount(u"Amount2"), amount(u"TotalAmount"),
            amount(u"Length"),  amount(u"Width"),   amount(u"Amount3")};
}

} // namespace

std::optional<TExitGoodDetail_Rec> TSerial_DM::ExitGoodDetail_Row(int id)
{
    std::optional<TExitGoodDetail_Rec> row;
    tmp_QRY.Open(u"SELECT *"_s + Rows + u"ID = "_s + QString::number(id));
    if (!tmp_QRY.IsEmpty()) {
        row.emplace();
        row->ID = id;
        for (size_t i = 0; i < row->DetailTitle.size(); ++i)
            row->DetailTitle[i] = tmp_QRY.Text(QString(u"DetailTitle%1"_s.arg(i + 1)));
        row->OnHand = AmountsOf(tmp_QRY, {});
        row->Exit = AmountsOf(tmp_QRY, u"_Exit"_s);
        row->Selected = tmp_QRY.Bool(u"Selected");
    }
    tmp_QRY.Close();
    return row;
}

good_detail::DetailLineResult TSerial_DM::ExitGoodDetail_Sum(const host::TDocumentLine &line)
{
    const auto common = [](const QString &field) {
        return u"CASE WHEN MIN(%1_Exit) = MAX(%1_Exit) THEN MAX(%1_Exit) ELSE 0 END AS %1_Exit"_s.arg(field);
    };
    const auto sum = [](const QString &field) { return u"SUM(%1_Exit) AS %1_Exit"_s.arg(field); };
    const QString third = line.UnitType == 3 ? common(u"Amount3"_s) : sum(u"Amount3"_s);
    tmp_QRY.Open(u"SELECT COUNT(*) AS Chosen, "_s +
                 QStringList{sum(u"Amount1"_s), sum(u"Amount2"_s), sum(u"TotalAmount"_s), common(u"Length"_s),
                             common(u"Width"_s), third}
                     .join(u", ") +
                 Rows + m_host.detailMovements.ExitGoodDetails_Condition(line) + u" AND Selected = 1"_s);
    const good_detail::DetailLineResult result{AmountsOf(tmp_QRY, u"_Exit"_s), tmp_QRY.Int(u"Chosen")};
    tmp_QRY.Close();
    return result;
}

void TSerial_DM::ExitGoodDetail_DeleteAll(const host::TDocumentLine &line)
{
    host::Exec(m_main,
               u"UPDATE GoodDetailKardexExit_Temp SET Amount1_Exit = 0, Amount2_Exit = 0, TotalAmount_Exit = 0, "
               "Length_Exit = 0, Width_Exit = 0, Amount3_Exit = 0, Selected = 0 WHERE "_s +
                   m_host.detailMovements.ExitGoodDetails_Condition(line) + u" AND Selected = 1"_s);
}
