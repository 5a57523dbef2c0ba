#pragma once

// Answers to the menus and modal dialogs a test opens. Both run their own
// event loop, so the answer is given from a timer, looked for again until
// the pop-up is there, for ten seconds at most, so that an answer a failed
// test no longer waits for does not linger.

#include <QApplication>
#include <QMenu>
#include <QTest>
#include <QTimer>

#include <functional>

// Chooses the enabled entry `text` of the next pop-up menu, with the keyboard
// as the operator would, or closes it with Escape when there is none. The
// entries offered land in `offered` (separators as "-"); `answered` is set
// once the menu has been seen.
inline void answerNextMenu(QObject *context, const QString &text, QStringList *offered = nullptr,
                           bool *answered = nullptr, int triesLeft = 1000)
{
    QTimer::singleShot(10, context, [=] {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (!menu) {
            if (triesLeft > 1)
                answerNextMenu(context, text, offered, answered, triesLeft - 1);
            return;
        }
        QAction *chosen = nullptr;
        if (offered)
            offered->clear();
        for (QAction *action : menu->actions()) {
            if (offered)
                *offered << (action->isSeparator() ? QStringLiteral("-") : action->text());
            if (!text.isEmpty() && action->text() == text && action->isEnabled())
                chosen = action;
        }
        if (chosen)
            menu->setActiveAction(chosen);
        if (answered)
            *answered = true;
        QTest::keyClick(menu, chosen ? Qt::Key_Return : Qt::Key_Escape);
    });
}

// Runs `answer` on the next modal dialog of type T once it is open.
template <class T>
void answerNextModal(QObject *context, const std::function<void(T *)> &answer, int triesLeft = 1000)
{
    QTimer::singleShot(10, context, [=] {
        if (auto *dialog = qobject_cast<T *>(QApplication::activeModalWidget()))
            answer(dialog);
        else if (triesLeft > 1)
            answerNextModal<T>(context, answer, triesLeft - 1);
    });
}
