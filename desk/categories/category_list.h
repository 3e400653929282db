#pragma once

#include "desk/categories/category_store.h"
#include "host/screens/base_dock.h"

#include <memory>

namespace Ui {
class CategoryList;
}

namespace desk {

/// The tree of goods categories, kept from the keyboard: every change is written at once. Whoever may change goods may
/// change their categories; everybody may look.
class TCategory_List_FRM : public host::TBaseDock_FRM
{
    Q_OBJECT

public:
    explicit TCategory_List_FRM(host::Host &host);
    ~TCategory_List_FRM() override;

protected:
    void FormShow() override;
    bool FormKeyDown(QKeyEvent *event) override;

private:
    void AddCommands();
    void BindTree();
    void Fill(int current);
    bool Allowed();
    /// The command; while a name is being edited it takes that name instead.
    std::function<void()> AfterEditing(const std::function<void()> &run);

    void NewNeighbour();
    void NewBranch();
    void Rename();
    void Delete();
    /// Among the neighbours, one place up or down.
    void Shift(int step);
    /// Below the neighbour above.
    void Deeper();
    /// Behind the node that it stands under.
    void Higher();
    void Cut();
    void Paste();
    void Move(int code, const CategoryStore::Place &place);

    void StoreNew(const QString &name, const CategoryStore::Place &place);
    void StoreName(int code, const QString &name);
    /// Shows why a change was refused; true when it was.
    bool Tell(const CategoryStore::Refusal &refusal);
    /// The branch behind a node among its neighbours, 0 for the last one.
    int Behind(int code) const;

    std::unique_ptr<Ui::CategoryList> m_ui;
    CategoryStore m_store;
    int m_cut = 0;
};

} // namespace desk
