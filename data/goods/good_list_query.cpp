#include "data/goods/good_list_query.h"

#include "host/data/sql_text.h"

using namespace Qt::StringLiterals;

namespace goods {

QString ListScript()
{
    return u"Exec GoodInf_List_SP "_s;
}

QString AdvancedParamsFor(const ListCriteria &criteria)
{
    QString params = criteria.AdvancedParams;
    // The columns too: a procedure is given each parameter once.
    for (const QStringView own : {u"@ManageType", u"@UserCode", u"@Cost_Flag", u"@GoodExistType", u"@RequestedCol"})
        params = host::DeleteParam(params, own);
    // A chosen group replaces that of the advanced search; with all groups shown none may be left over from it.
    if (criteria.GrpCode == 0 || criteria.Advanced)
        params = host::DeleteParam(params, u"@GrpCode");
    return params;
}

int GoodExistType(int stockTab)
{
    switch (stockTab) {
    case 0:
        return 1;
    case 1:
        return 0;
    default:
        return -1;
    }
}

QStringList ListFilter(const ListCriteria &criteria)
{
    QStringList filter;
    filter << (criteria.GrpCode != 0 ? u"@GrpCode = %1"_s.arg(criteria.GrpCode) : u"@GrpCode = NULL"_s);
    filter << u"@ManageType   = "_s + QString::number(criteria.ManageType) + u",@UserCode  = "_s +
                  QString::number(criteria.UserCode) + u", @RequestedCol="_s + host::QuotedStr(criteria.RequestedCol);
    if (criteria.StockTabs)
        filter << u"@GoodExistType = %1"_s.arg(GoodExistType(criteria.StockTab));
    const QString advanced = AdvancedParamsFor(criteria);
    if (criteria.Advanced && !advanced.isEmpty())
        filter << advanced;
    return filter;
}

bool HaveAdvFilter(const SearchCriteria &criteria)
{
    return !criteria.Tags.isEmpty() || criteria.Category != 0 || criteria.SelectedList != 0;
}

QString TagsParam(const QString &tags)
{
    return tags.isEmpty() ? QString() : u"@Tags = "_s + host::QuotedStr(host::CodeList(tags));
}

QString CategoryParam(int category)
{
    return category == 0 ? QString() : u"@Category = ',%1,'"_s.arg(category);
}

QString SelectedListParams(int list, bool leftOut)
{
    return u"@SL_Code = %1,@DisplayType = %2"_s.arg(list).arg(leftOut ? 0 : 1);
}

QString SearchParams(const ListCriteria &list, const SearchCriteria &criteria)
{
    QString params = u"@ManageType = %1,@UserCode = %2,@Cost_Flag = 1,"_s.arg(list.ManageType).arg(list.UserCode) +
                     SelectedListParams(criteria.SelectedList, criteria.LeftOut);
    if (list.GrpCode != 0)
        params += u",@GrpCode = %1"_s.arg(list.GrpCode);
    if (list.StockTabs)
        params += u",@GoodExistType = %1"_s.arg(GoodExistType(list.StockTab));
    return params;
}

} // namespace goods
