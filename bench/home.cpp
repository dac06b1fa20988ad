#include "home.h"

#include "library/line_files.h"
#include "library/playlist_row.h"
#include "made_music.h"
#include "platform/posix/drive_paths.h"
#include "platform/posix/posix_files.h"
#include "support/made_songs.h"

#include <utility>

namespace larkspin {

namespace {

constexpr double songSeconds = 60;

} // namespace

Home::Home(int rows, HomeCache cache, const std::string& songType,
           const std::string& furtherSettings)
    : song_(disk_.path() / ("tone" + songType)), cache_(std::move(cache)) {
    std::vector<Row> made = scannedRows(rows - 1);
    made.push_back(Row(rowOfFile(song_.filename().native(), drivePath(disk_.path().native()))));
    if (!songType.empty())
        makeSong(song_, songSeconds);
    const auto data = disk_.path() / "larkspin";
    std::filesystem::create_directories(data);
    PosixFiles files;
    LineFiles(files).savelines(drivePath((data / "temp.lst").native()), savedOrder(made));
    disk_.write("larkspin/larkspin.ini",
                "[lark]\r\nload=212\r\nplayed=4711\r\ntempo=100\r\nvolume=50\r\nsilent=no\r\n"
                "trigger='\r\nmp3sec=987654\r\nprogsec=1987654\r\nmedia filter=mp3\r\n" +
                    furtherSettings);
}

std::vector<std::string> Home::variables() const {
    const std::string path = disk_.path().native();
    return {"HOME=" + path, "XDG_DATA_HOME=" + path, "XDG_CONFIG_HOME=" + path,
            "XDG_RUNTIME_DIR=" + path, "XDG_CACHE_HOME=" + cache_->path().native()};
}

} // namespace larkspin
