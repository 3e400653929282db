#include "division/division_items.h"

#include "host/controls/grid.h"
#include "ui_division_items.h"

using namespace Qt::StringLiterals;

TGoodDetailDivision_DetailItems_Get_FRM::TGoodDetailDivision_DetailItems_Get_FRM(host::Host &host)
    : TBaseGet_FRM(host, host::TSoftwarePart::GoodDetailDivision),
      m_form(std::make_unique<Ui::TGoodDetailDivision_DetailItems_Get_FRM>())
{
    setObjectName(u"TGoodDetailDivision_DetailItems_Get_FRM"_s);
    m_form->setupUi(Content());
}

TGoodDetailDivision_DetailItems_Get_FRM::~TGoodDetailDivision_DetailItems_Get_FRM() = default;

int TGoodDetailDivision_DetailItems_Get_FRM::OpenRow(const DivisionRowOpening &opening)
{
    m_opening = opening;
    return Open(opening.DivisionRow, opening.Mode);
}

int TGoodDetailDivision_DetailItems_Get_FRM::OpenText(const QString &text)
{
    m_opening = {};
    return Open({}, host::TFormMode::New, text);
}

void TGoodDetailDivision_DetailItems_Get_FRM::Prepare()
{
    Begin();
}

void TGoodDetailDivision_DetailItems_Get_FRM::Load()
{
    Begin();
}

void TGoodDetailDivision_DetailItems_Get_FRM::Begin()
{
    AbortOpening();
}

std::vector<host::Check> TGoodDetailDivision_DetailItems_Get_FRM::Validate()
{
    return {};
}

void TGoodDetailDivision_DetailItems_Get_FRM::Write()
{}

void TGoodDetailDivision_DetailItems_Get_FRM::FormClose()
{}
