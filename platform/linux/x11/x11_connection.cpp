#include "platform/linux/x11/x11_connection.h"

#include <poll.h>
#include <xcb/xcb.h>
#include <xcb/xcbext.h>

#include <algorithm>
#include <string_view>
#include <utility>

#include "platform/linux/x11/xcb_owned.h"

namespace notewick {
namespace {

constexpr std::size_t FIRST_PART = std::size_t{64} * 1024;
constexpr std::size_t FURTHER_PART = std::size_t{1024} * 1024;

/// In the order of X11Atom.
constexpr std::array<std::string_view, 13> ATOM_NAMES = {"_NET_ACTIVE_WINDOW",
                                                         "_NET_CLIENT_LIST_STACKING",
                                                         "_NET_CLIENT_LIST",
                                                         "_NET_SUPPORTING_WM_CHECK",
                                                         "_NET_WM_NAME",
                                                         "_NET_WM_PID",
                                                         "UTF8_STRING",
                                                         "COMPOUND_TEXT",
                                                         "WM_CLIENT_LEADER",
                                                         "WM_CLIENT_MACHINE",
                                                         "WM_CLASS",
                                                         "WM_NAME",
                                                         "STRING"};

/// The screen of that number among those of the server; null when there is none.
const xcb_screen_t* screenAt(const xcb_setup_t* setup, int number) {
  auto screens = xcb_setup_roots_iterator(setup);
  for (; number > 0 && screens.rem > 0; --number) xcb_screen_next(&screens);
  return screens.rem > 0 ? screens.data : nullptr;
}

void waitForData(xcb_connection_t* connection, const Deadline& deadline) {
  pollfd descriptor{xcb_get_file_descriptor(connection), POLLIN, 0};
  poll(&descriptor, 1, static_cast<int>(deadline.remaining().count()));
}

}  // namespace

std::unique_ptr<X11Connection> X11Connection::open() {
  int screenNumber = 0;
  Handle handle(xcb_connect(nullptr, &screenNumber), xcb_disconnect);
  if (xcb_connection_has_error(handle.get()) != 0) return nullptr;
  std::unique_ptr<X11Connection> connection(new X11Connection(std::move(handle), screenNumber));
  return connection->internAtoms() ? std::move(connection) : nullptr;
}

X11Connection::X11Connection(Handle handle, int screenNumber) : handle_(std::move(handle)) {
  const auto* setup = xcb_get_setup(handle_.get());
  idMask_ = setup->resource_id_mask;
  if (const auto* screen = screenAt(setup, screenNumber)) rootWindow_ = screen->root;
}

bool X11Connection::internAtoms() {
  static_assert(ATOM_NAMES.size() == ATOM_COUNT);
  std::array<xcb_intern_atom_cookie_t, ATOM_COUNT> requests{};
  std::transform(ATOM_NAMES.begin(), ATOM_NAMES.end(), requests.begin(), [this](auto name) {
    const auto length = static_cast<std::uint16_t>(name.size());
    return xcb_intern_atom(handle_.get(), 0, length, name.data());
  });
  bool haveAll = true;
  for (std::size_t i = 0; i < ATOM_COUNT; ++i) {
    xcb_generic_error_t* error = nullptr;
    const XcbOwned<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(handle_.get(), requests[i], &error));
    const XcbOwned<xcb_generic_error_t> ownedError(error);
    haveAll = haveAll && reply;
    if (reply) atoms_[i] = reply->atom;
  }
  return haveAll;
}

std::vector<std::optional<X11Property>> X11Connection::read(
    const std::vector<X11PropertyQuery>& queries, const Deadline& deadline) {
  std::vector<unsigned int> requests;
  for (const auto& query : queries) requests.push_back(ask(query, 0, FIRST_PART));
  xcb_flush(handle_.get());
  std::vector<std::optional<X11Property>> properties;
  for (const auto request : requests) properties.push_back(awaitProperty(request, deadline));
  dropEvents();
  return properties;
}

std::vector<std::optional<X11Property>> X11Connection::readWhole(
    const std::vector<X11PropertyQuery>& queries, const Deadline& deadline) {
  auto properties = read(queries, deadline);
  for (std::size_t i = 0; i < queries.size(); ++i) {
    auto& property = properties[i];
    while (property && property->bytesLeft > 0) {
      property = readOn(queries[i], std::move(*property), deadline);
    }
  }
  return properties;
}

std::optional<X11Property> X11Connection::readOn(const X11PropertyQuery& query, X11Property start,
                                                 const Deadline& deadline) {
  const auto request = ask(query, start.bytes.size(), FURTHER_PART);
  xcb_flush(handle_.get());
  const auto next = awaitProperty(request, deadline);
  const bool isSameValue = next && next->type == start.type &&
                           next->bitsPerUnit == start.bitsPerUnit &&
                           next->bytes.size() + next->bytesLeft == start.bytesLeft;
  if (!isSameValue) return std::nullopt;
  start.bytes += next->bytes;
  start.bytesLeft = next->bytesLeft;
  return start;
}

unsigned int X11Connection::ask(const X11PropertyQuery& query, std::size_t offset,
                                std::size_t size) {
  constexpr std::size_t UNIT = 4;
  const auto atom = atoms_[static_cast<std::size_t>(query.property)];
  return xcb_get_property(handle_.get(), 0, query.window, atom, XCB_GET_PROPERTY_TYPE_ANY,
                          static_cast<std::uint32_t>(offset / UNIT),
                          static_cast<std::uint32_t>(size / UNIT))
      .sequence;
}

// Keyboard mapping changes are sent to every client, asked for or not.
void X11Connection::dropEvents() {
  while (XcbOwned<xcb_generic_event_t>(xcb_poll_for_queued_event(handle_.get()))) {
  }
}

std::optional<X11Property> X11Connection::awaitProperty(unsigned int request,
                                                        const Deadline& deadline) {
  void* answer = nullptr;
  xcb_generic_error_t* error = nullptr;
  while (xcb_poll_for_reply(handle_.get(), request, &answer, &error) == 0) {
    if (deadline.isOver()) {
      xcb_discard_reply(handle_.get(), request);
      return std::nullopt;
    }
    waitForData(handle_.get(), deadline);
  }
  const XcbOwned<xcb_generic_error_t> ownedError(error);
  const XcbOwned<xcb_get_property_reply_t> reply(static_cast<xcb_get_property_reply_t*>(answer));
  if (!reply) return std::nullopt;

  X11Property property;
  const auto type = std::find(atoms_.begin(), atoms_.end(), reply->type);
  if (type != atoms_.end()) property.type = static_cast<X11Atom>(type - atoms_.begin());
  property.bitsPerUnit = reply->format;
  property.bytesLeft = reply->bytes_after;
  property.bytes.assign(static_cast<const char*>(xcb_get_property_value(reply.get())),
                        static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
  return property;
}

}  // namespace notewick
