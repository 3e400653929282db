#include "desk/services/categories.h"

#include "desk/categories/category_list.h"

namespace desk {

void CategoryTree::Open_Categories()
{
    TCategory_List_FRM(*m_host).ShowModally();
}

} // namespace desk
