#pragma once

#include "platform/accessible_elements.h"

#include <QObject>
#include <QThreadPool>
#include <memory>

class AtspiInquiry;
class QTimer;

// The controls of other programs through the desktop's accessibility bus, on a thread of its own.
class AtspiElements : public AccessibleElements {
public:
    AtspiElements();
    ~AtspiElements() override;
    bool isAvailable() const override;
    void prepare() override;
    void rest() override;
    QFuture<std::optional<AccessibleElement>> elementAt(const ClickTarget &target) override;

private:
    std::unique_ptr<AtspiInquiry> m_inquiry; // m_worker only
    std::unique_ptr<AtspiInquiry> m_wakener; // m_waker only: a program that hangs delays no question
    std::unique_ptr<QTimer> m_newcomers;     // programs that start while we are prepared
    bool m_hasEnabled = false;               // the desktop's switch was off
    QThreadPool m_worker;
    QThreadPool m_waker;
};
