#include "host/controls/text_limit.h"

#include <QPlainTextEdit>
#include <QTextCursor>
#include <QTextDocument>

namespace host {

void LimitLength(QPlainTextEdit &edit, int length)
{
    QObject::connect(&edit, &QPlainTextEdit::textChanged, &edit, [&edit, length] {
        // A document ends with a mark of its own.
        const int excess = edit.document()->characterCount() - 1 - length;
        QTextCursor cursor = edit.textCursor();
        const int end = cursor.position();
        int begin = qMax(0, end - excess);
        if (excess <= 0 || begin == end)
            return;
        if (begin > 0 && edit.document()->characterAt(begin).isLowSurrogate())
            --begin;
        cursor.setPosition(begin);
        cursor.setPosition(end, QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
    });
}

} // namespace host
