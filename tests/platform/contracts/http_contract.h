#pragma once

#include "platform/http.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>

// A web server as one client sees it.
class HttpWorld {
public:
    enum class Trouble { Silence, HalfAReply, NoConnection, NoSuchHost };

    virtual ~HttpWorld() = default;
    virtual Http &http() = 0;
    // The address of a server that answers so from now on.
    virtual QUrl answering(int status, const QByteArray &body) = 0;
    virtual QUrl troubled(Trouble trouble) = 0;
    struct Arrival {
        QByteArray method;
        QByteArray path;
        QByteArray heads; // lower case, one a line
        QByteArray body;
    };
    // What the server that answers was last sent.
    virtual Arrival lastArrival() = 0;
    // Ends the client, with whatever is under way.
    virtual void end() = 0;
};

class HttpContract : public testing::TestWithParam<std::function<std::unique_ptr<HttpWorld>()>> {
protected:
    const std::unique_ptr<HttpWorld> m_world = GetParam()();
};
