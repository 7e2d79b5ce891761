#include "commands/serve/Client.h"

#include <QHostAddress>
#include <QTcpSocket>

namespace {

constexpr int longestPatience = 10000;              // ms
constexpr std::chrono::seconds longestStuck{10};    // where the others wait for a client
constexpr int systemBytes = 1 << 16;    // what the system holds for a client comes late to it
constexpr std::size_t longestAbout = 120;

std::string nameOf(const QTcpSocket& socket)
{
    bool isVersion4 = false;
    const quint32 number = socket.peerAddress().toIPv4Address(&isVersion4);
    const QString address =
        isVersion4 ? QHostAddress(number).toString() : "[" + socket.peerAddress().toString() + "]";
    return address.toStdString() + ":" + std::to_string(socket.peerPort());
}

}    // namespace

Client::Client(QTcpSocket* connection, const ClientOptions& clientOptions, Tell tellLine)
    : options(clientOptions), socket(connection), tell(std::move(tellLine)),
      address(nameOf(*connection)), state(options.caster ? State::asking : State::receiving),
      served(!options.caster), writer(makeWriter(options.form))
{
    socket->setParent(this);
    socket->setReadBufferSize(static_cast<qint64>(CasterOptions::longestHead));
    socket->setSocketOption(QAbstractSocket::SendBufferSizeSocketOption, systemBytes);
    socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    socket->setSocketOption(QAbstractSocket::KeepAliveOption, 1);
    connect(socket, &QTcpSocket::readyRead, this, [this] { takeInput(); });
    connect(socket, &QTcpSocket::bytesWritten, this, [this] { lastTaken = Clock::now(); });
    connect(&patience, &QTimer::timeout, this, [this] { endPatience(); });
    patience.setSingleShot(true);
    if (state == State::asking) {
        patience.start(longestPatience);
    } else {
        tell(address + " connected");
    }
}

void Client::endPatience()
{
    if (state == State::asking) {
        tell(address + " refused: no request came within 10 s");
        leaveAfter(casterRefusal());
    } else if (state == State::leaving) {
        socket->abort();
    }
}

qint64 Client::waiting() const
{
    return socket->bytesToWrite();
}

// What comes behind the head of a request, such as the position of a receiver, is of no interest.
void Client::takeInput()
{
    const QByteArray come = socket->readAll();
    if (state == State::asking) {
        head.append(come.constData(), static_cast<std::size_t>(come.size()));
        takeHead();
    }
}

void Client::takeHead()
{
    if (head.find("\r\n\r\n") == std::string::npos && head.find("\n\n") == std::string::npos) {
        if (head.size() > CasterOptions::longestHead) {
            tell(address + " refused: the head of its request has no end");
            leaveAfter(casterRefusal());
        }
        return;
    }
    const CasterReply answer = casterReply(*options.caster, head);
    head = {};
    tell(address + " " + answer.about.substr(0, longestAbout));
    if (!answer.isStream) {
        leaveAfter(answer.text);
        return;
    }
    served = true;
    isChunked = answer.isChunked;
    state = State::receiving;
    patience.stop();
    write(answer.text);
}

void Client::write(std::string_view text)
{
    if (waiting() == 0) {
        lastTaken = Clock::now();
    }
    socket->write(text.data(), static_cast<qint64>(text.size()));
    socket->flush();
}

// Goes as soon as it has taken the answer, but not much later.
void Client::leaveAfter(const std::string& answer)
{
    state = State::leaving;
    patience.start(longestPatience);
    write(answer);
    socket->disconnectFromHost();
}

void Client::send(std::span<const std::uint8_t> packed, const Envelope& envelope)
{
    message.clear();
    writer->setEnvelope(envelope);
    if (!writer->append(packed, message)) {
        return;
    }
    if (waiting() > roomBytes) {
        drop("it does not take what is sent; 1 MB waits");
        return;
    }
    const std::string_view text{reinterpret_cast<const char*>(message.data()), message.size()};
    if (isChunked) {
        const QByteArray size = QByteArray::number(static_cast<qulonglong>(text.size()), 16);
        write(size.toStdString() + "\r\n" + std::string(text) + "\r\n");
    } else {
        write(text);
    }
    bytes += text.size();
}

void Client::dropIfStuck()
{
    if (waiting() > 0 && Clock::now() - lastTaken > longestStuck) {
        drop("it has taken nothing for 10 s");
    }
}

void Client::end()
{
    if (state == State::asking) {
        drop("");
    } else if (state == State::receiving) {
        goodbye = "has it all";
        state = State::leaving;
        write(isChunked ? "0\r\n\r\n" : "");
        socket->disconnectFromHost();
    }
}

void Client::drop(const std::string& reason)
{
    state = State::leaving;
    goodbye = "dropped: " + reason;
    socket->abort();
}
