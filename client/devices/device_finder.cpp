#include "devices/device_finder.h"

#include <QNetworkDatagram>
#include <QNetworkInterface>
#include <QPointer>
#include <QUdpSocket>
#include <QUuid>
#include <algorithm>

#include "devices/discovery_message.h"

namespace TarnClient {

namespace {

constexpr quint16 kPort = 3702;
constexpr int kAskAgainMs = 700;  // a datagram may be lost
constexpr int kMostQuestions = 3, kMostDevices = 1000, kMostAtOnce = 50;

QHostAddress Everyone() {
  return QHostAddress(QStringLiteral("239.255.255.250"));
}

/// A socket for each network that passes on what is sent to everyone.
std::vector<std::unique_ptr<QUdpSocket>> SocketsToAll() {
  std::vector<std::unique_ptr<QUdpSocket>> sockets;
  for (const QNetworkInterface& network : QNetworkInterface::allInterfaces()) {
    const QNetworkInterface::InterfaceFlags wanted = QNetworkInterface::IsUp | QNetworkInterface::IsRunning;
    if ((network.flags() & wanted) != wanted || !network.flags().testFlag(QNetworkInterface::CanMulticast)) {
      continue;
    }
    for (const QNetworkAddressEntry& entry : network.addressEntries()) {
      auto socket = std::make_unique<QUdpSocket>();
      if (entry.ip().protocol() == QAbstractSocket::IPv4Protocol && socket->bind(entry.ip(), 0)) {
        socket->setMulticastInterface(network);
        sockets.push_back(std::move(socket));
      }
    }
  }
  return sockets;
}

}  // namespace

CDeviceFinder::CDeviceFinder(QObject* parent) : QObject(parent) {
  qRegisterMetaType<TarnClient::DeviceFound>();
  connect(&tick_, &QTimer::timeout, this, &CDeviceFinder::Tick);
}

CDeviceFinder::~CDeviceFinder() = default;

bool CDeviceFinder::Find() {
  return Begin(SocketsToAll(), Everyone(), kPort);
}

bool CDeviceFinder::FindAt(const QHostAddress& address, quint16 port) {
  std::vector<std::unique_ptr<QUdpSocket>> sockets;
  sockets.push_back(std::make_unique<QUdpSocket>());
  sockets.back()->bind(QHostAddress(QHostAddress::AnyIPv4), 0);
  return Begin(std::move(sockets), address, port);
}

bool CDeviceFinder::Begin(std::vector<std::unique_ptr<QUdpSocket>> sockets, const QHostAddress& address, quint16 port) {
  Stop();
  sockets_ = std::move(sockets);
  address_ = address;
  port_ = port;
  for (const std::unique_ptr<QUdpSocket>& socket : sockets_) {
    connect(socket.get(), &QUdpSocket::readyRead, this, [this, from = socket.get()] { Read(*from); });
  }
  if (!Ask()) {
    Stop();
    return false;
  }
  since_.start();
  tick_.start(std::min(kAskAgainMs, patience_ms_));
  return true;
}

void CDeviceFinder::Stop() {
  tick_.stop();
  for (std::unique_ptr<QUdpSocket>& socket : sockets_) {
    socket->disconnect(this);
    socket.release()->deleteLater();  // one of them may be reading right now
  }
  sockets_.clear();
  questions_.clear();
  known_.clear();
}

bool CDeviceFinder::Ask() {
  questions_.append(QStringLiteral("urn:uuid:") + QUuid::createUuid().toString(QUuid::WithoutBraces));
  const QByteArray message = ProbeMessage(questions_.constLast());
  bool is_sent = false;
  for (const std::unique_ptr<QUdpSocket>& socket : sockets_) {
    is_sent |= socket->writeDatagram(message, address_, port_) == message.size();
  }
  return is_sent;
}

void CDeviceFinder::Tick() {
  if (since_.hasExpired(patience_ms_)) {
    Stop();
    Q_EMIT SignalFinished();
  } else if (questions_.size() < kMostQuestions) {
    Ask();
  }
}

void CDeviceFinder::Read(QUdpSocket& socket) {
  for (int at_once = 0; at_once < kMostAtOnce && socket.hasPendingDatagrams(); ++at_once) {
    const QNetworkDatagram datagram = socket.receiveDatagram();
    for (const DeviceFound& device : ReadProbeMatches(datagram.data(), questions_, datagram.senderAddress())) {
      Report(device);
    }
  }
  if (socket.hasPendingDatagrams()) {
    QTimer::singleShot(0, this, [this, from = QPointer<QUdpSocket>(&socket)] {
      if (from) {
        Read(*from);
      }
    });  // the user's clicks come first
  }
}

void CDeviceFinder::Report(const DeviceFound& device) {
  const bool is_new = IsFinding() && !known_.contains(device.id) && known_.size() < kMostDevices;
  if (is_new) {
    known_.insert(device.id);
    Q_EMIT SignalFound(device);
  }
}

}  // namespace TarnClient
