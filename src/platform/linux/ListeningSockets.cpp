#include "platform/linux/ListeningSockets.h"

#include <algorithm>
#include <array>
#include <limits>

#include "platform/linux/TextFields.h"

namespace korvantis {
namespace {

constexpr std::string_view listenState = "0A";
constexpr std::size_t localWord = 1;
constexpr std::size_t stateWord = 3;
constexpr std::size_t userWord = 7;
constexpr std::size_t inodeWord = 9;

std::optional<ListeningSocket> listeningSocket(std::string_view line, bool isVersion6) {
  std::array<std::string_view, inodeWord + 1> words;
  for (std::string_view& word : words) word = takeWord(line);
  const std::size_t colon = words[localWord].rfind(':');
  if (words[stateWord] != listenState || colon == std::string_view::npos) return std::nullopt;
  const auto port = unsignedNumber(words[localWord].substr(colon + 1), 16);
  const auto user = unsignedNumber(words[userWord]);
  const auto inode = unsignedNumber(words[inodeWord]);
  if (!port || !user || !inode || *inode == 0) return std::nullopt;
  if (*port > std::numeric_limits<std::uint16_t>::max()) return std::nullopt;
  if (*user > std::numeric_limits<std::uint32_t>::max()) return std::nullopt;
  return ListeningSocket{*inode, static_cast<std::uint16_t>(*port),
                         static_cast<std::uint32_t>(*user), isVersion6};
}

}  // namespace

std::vector<ListeningSocket> parseSocketTable(std::string_view text, bool isVersion6) {
  std::vector<ListeningSocket> sockets;
  while (text.find('\n') != std::string_view::npos) {
    if (const auto socket = listeningSocket(takeLine(text), isVersion6)) {
      sockets.push_back(*socket);
    }
  }
  return sockets;
}

std::optional<std::uint64_t> socketInode(std::string_view link) {
  constexpr std::string_view front = "socket:[";
  if (!link.starts_with(front) || !link.ends_with(']')) return std::nullopt;
  return unsignedNumber(link.substr(front.size(), link.size() - front.size() - 1));
}

ListeningSockets::ListeningSockets(const std::vector<ListeningSocket>& sockets) {
  byInode.reserve(sockets.size());
  for (const ListeningSocket& socket : sockets) byInode.emplace(socket.inode, socket);
}

std::optional<ListeningSocket> ListeningSockets::find(std::uint64_t inode) const {
  const auto found = byInode.find(inode);
  return found == byInode.end() ? std::nullopt : std::optional(found->second);
}

bool ListeningSockets::hasAny(std::uint32_t userID) const {
  return std::any_of(byInode.begin(), byInode.end(),
                     [userID](const auto& entry) { return entry.second.userID == userID; });
}

}  // namespace korvantis
