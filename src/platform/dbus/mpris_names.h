// What a player is called on the session bus, ours as well as another one.
#pragma once

namespace larkspin {

inline constexpr const char* mprisPath = "/org/mpris/MediaPlayer2";
inline constexpr const char* mprisRoot = "org.mpris.MediaPlayer2";
inline constexpr const char* mprisPlayer = "org.mpris.MediaPlayer2.Player";

} // namespace larkspin
