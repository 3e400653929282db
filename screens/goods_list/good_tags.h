#pragma once

#include "host/controls/tags_panel.h"

#include <QScrollArea>

namespace goods_list {

/// The tags of one good.
struct GoodTags
{
    int Code = 0;
    QString Name;
    QString Tags; ///< tag codes joined by ","

    bool operator==(const GoodTags &) const = default;
};

/// A line for each of several goods: its name and its tags. The tags of a single good can be changed here.
class GoodTagsView : public QScrollArea
{
    Q_OBJECT

public:
    explicit GoodTagsView(QWidget *parent = nullptr);

    void SetAvailable(const QList<host::Tag> &tags);
    /// Shows the goods in their order, and that there are `more`. What is shown already stays as it is, with the focus.
    void Show(const QList<GoodTags> &goods, int more);

signals:
    /// The user changed the tags of a good: tag codes joined by ",".
    void Changed(int code, const QString &tags);

private:
    QList<host::Tag> m_available;
    QList<GoodTags> m_shown;
    int m_more = 0;
};

} // namespace goods_list
