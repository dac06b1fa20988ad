// The whole program beside a client of real windows, both as child processes: what the owner sees
// here, and what is done there.
#include "support/windows_machine.h"

namespace larkspin {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using Lines = std::vector<std::string>;

constexpr const char* isThere = "[room] you are in Town Square";
constexpr const char* filter = "current media filter:";

struct WindowProgram : testing::Test {
    WindowProgram() {
        home.write("larkspin/larkspin.ini", "[lark]\r\nload=1\r\ntrigger='\r\n");
        program = Child::start(LARKSPIN_TTY, ownHome(home.path().native()));
        EXPECT_TRUE(shows("load:  <b>"));
        type("/connect windows");
        EXPECT_TRUE(shows(isThere));
    }

    void type(const std::string& line) const { program->tell(line); }
    bool shows(std::string_view text) const { return program->says(text, patience); }
    void says(const std::string& name, const std::string& words) const {
        client->tell("say " + name + '\t' + words);
    }
    // The owner says it in the client, and what he sees there then.
    bool answers(const std::string& words, std::string_view answer) const {
        says("Owner", words);
        return client->tells(answer);
    }
    // From what is typed to its answer, over several times: others may have the machine at one.
    Clock::duration timeOf(const std::string& line, std::string_view answer) const {
        constexpr int times = 5;
        const auto start = Clock::now();
        for (int time = 0; time < times; ++time) {
            type(line);
            EXPECT_TRUE(shows(answer));
        }
        return (Clock::now() - start) / times;
    }
    // The bridge among the program's children.
    pid_t bridge() const {
        const std::string id = std::to_string(program->id());
        std::ifstream children("/proc/" + id + "/task/" + id + "/children");
        for (pid_t child = 0; children >> child;)
            if (isBridge(child))
                return child;
        return 0;
    }
    static bool isBridge(pid_t process) {
        std::ifstream command("/proc/" + std::to_string(process) + "/cmdline");
        const std::string words{std::istreambuf_iterator<char>(command), {}};
        return words.find("larkspin-bridge.exe") != words.npos;
    }

    TempDirectory home;
    std::unique_ptr<WindowsClient> client = std::make_unique<WindowsClient>();
    std::unique_ptr<Child> program;
};

} // namespace

TEST_F(WindowProgram, GreetsAndAnswersInTheClientsRoom) {
    type("/menu rstartp");
    EXPECT_TRUE(client->tells("entered </html>"));
    EXPECT_TRUE(client->tells("larkspin player - by moraine"));
    EXPECT_TRUE(client->tells("load:  <b>2</b>"));
    EXPECT_TRUE(shows("Owner: </html>")); // read where it stands now
    EXPECT_TRUE(shows("load:  <b>2</b>"));
    type("hi there");
    EXPECT_TRUE(client->tells("entered hi there"));
    EXPECT_TRUE(shows("Owner: hi there"));
}

TEST_F(WindowProgram, ObeysTheOwnerAndNobodyElse) {
    for (const char* const line : {"'filter?", "x\\r\\nOwner:\\t'filter?", "Owner:\\t'filter?"})
        says("Ann", line);
    says("owner", "'filter?");
    EXPECT_TRUE(answers("'play nothing", "was not found"));
    EXPECT_EQ(client->told(), Lines{});
    client->tell("signon Ann");
    says("Owner", "'filter?");
    says("Ann", "'filter?");
    EXPECT_TRUE(client->tells(filter));
    EXPECT_EQ(client->told(), Lines{});
}

TEST_F(WindowProgram, PutsPeopleOutAndLetsThemBackIn) {
    client->tell("people Owner|Ann|sixteen letters!|Bob");
    says("Ann", "here we are");
    EXPECT_TRUE(shows("Ann: here we are"));
    type("/names");
    for (const char* const row :
         {"Town Square, 4 people", "  Owner", "  Ann", "  sixteen letters!", "  Bob"})
        EXPECT_TRUE(shows(std::string("[room] ") + row)) << row;
    EXPECT_TRUE(answers("'x bob", "pressed Ignore Member 3"));
    EXPECT_TRUE(client->tells("<b>Bob</b>, ignored bastard"));
    EXPECT_TRUE(answers("'ban ann", "you aren't the owner"));
    client->tell("owns 1");
    EXPECT_TRUE(answers("'ban ann", "pressed Eject Member 1"));
    EXPECT_TRUE(client->tells("<b>Ann</b>, ejected bastard"));
    EXPECT_TRUE(answers("'unban ann", "pressed Ejected List"));
    EXPECT_TRUE(client->tells("pressed Allow Entry 0"));
    EXPECT_TRUE(client->tells("<b>Ann</b>, unbanned bastard"));
    EXPECT_TRUE(client->tells("pressed People List"));
    type("/names");
    EXPECT_TRUE(shows("[room]   Bob"));
    EXPECT_TRUE(shows("[room]   Ann"));
}

TEST_F(WindowProgram, WatchesTransfers) {
    client->tell("modal File Transfer - 12%|Now Uploading ride.mp3|About 5 minutes remaining");
    EXPECT_TRUE(client->tells("hidden File Transfer - 12%"));
    EXPECT_TRUE(client->tells("minimised File Transfer - 12%"));
    EXPECT_TRUE(client->tells("auto-upchat enabled"));
    EXPECT_TRUE(answers("'ustat", "upload:  <b>ride.mp3</b> - <b>12%</b> - min:  <b>5"));
    type("/menu upzoff");
    EXPECT_TRUE(client->tells("restored File Transfer - 12%"));
    EXPECT_TRUE(client->tells("upchat off"));
    client->tell("modal File Transfer|File transfer complete.");
    EXPECT_TRUE(client->tells("pressed OK"));
    EXPECT_TRUE(answers("'ustat", "you arent uploading"));
    client->tell("download File Transfer - 40%|Now Downloading low.mp3|About 2 minutes remaining");
    EXPECT_TRUE(answers("'dstat", "download:  <b>low.mp3</b> - <b>40%</b> - min:  <b>2"));
}

TEST_F(WindowProgram, DoesErrandsInTheClient) {
    EXPECT_TRUE(answers("'kw music", "goto keyword:  <b>music"));
    EXPECT_TRUE(client->tells("keyword music"));
    EXPECT_TRUE(answers("'imsoff", "keyword aol://9293:$IM_OFF"));
    EXPECT_TRUE(client->tells("message $IM_OFF: lks"));
    EXPECT_TRUE(client->tells("pressed OK"));
    EXPECT_TRUE(client->tells("closed Send Instant Message"));
    EXPECT_TRUE(client->tells("ims are now off"));
    client->tell("clock It is 7:05 PM. You have been online for 12 minutes.");
    EXPECT_TRUE(answers("'ot", "online for <b>1</b><b>2</b> minutes."));
    EXPECT_TRUE(answers("'hidewelc", "hidden Welcome, Owner!"));
    EXPECT_TRUE(answers("'closeaol", "closed America  Online"));
    EXPECT_TRUE(client->ends());
    EXPECT_TRUE(shows("[room] the room is closed"));
}

// The text is longer than what is read of it, and its head is dropped with every line.
TEST_F(WindowProgram, HearsEachLineOfALongTextOnce) {
    for (const char* const order : {"fill 70000", "limit 70000", "limit 65535", "limit 3000"}) {
        SCOPED_TRACE(order);
        client->tell(order);
        for (int line = 0; line < 3; ++line)
            EXPECT_TRUE(answers("'filter?", filter));
        EXPECT_TRUE(answers("'play nothing", "was not found"));
        EXPECT_EQ(client->told(), Lines{});
    }
}

TEST_F(WindowProgram, HoldsNothingUpWhileTheClientHangs) {
    client->signal(SIGSTOP);
    EXPECT_TRUE(shows("[room] the chat client doesn't answer"));
    EXPECT_LT(timeOf("hello?", "[room] not said: hello?"), 1s);
    type("/room 0");
    EXPECT_TRUE(shows("[room] you are at home"));
    EXPECT_LT(timeOf("'filter?", filter), 1s);
    type("/room 1");
    client->signal(SIGCONT);
    EXPECT_TRUE(shows("[room] the chat client answers again"));
    EXPECT_TRUE(answers("'filter?", filter));
}

TEST_F(WindowProgram, TellsOfAClientThatIsBusyForAWhile) {
    client->tell("hang 3000");
    EXPECT_TRUE(shows("[room] the chat client doesn't answer"));
    EXPECT_TRUE(shows("[room] the chat client answers again"));
    type("hello?");
    EXPECT_TRUE(client->tells("entered hello?"));
}

TEST_F(WindowProgram, FollowsAClientThatCrashesAndComesBack) {
    client->tell("crash");
    EXPECT_TRUE(shows("[room] the room is closed"));
    EXPECT_TRUE(client->ends());
    EXPECT_LT(timeOf("'filter?", filter), 1s);
    client = std::make_unique<WindowsClient>();
    EXPECT_TRUE(shows(isThere));
    EXPECT_TRUE(answers("'filter?", filter));
    client->tell("room Cellar");
    EXPECT_TRUE(shows("[room] you are in Cellar"));
    EXPECT_TRUE(answers("'filter?", filter));
}

TEST_F(WindowProgram, BringsItsBridgeBackAndLeavesNone) {
    const pid_t first = bridge();
    ASSERT_GT(first, 0);
    ::kill(first, SIGKILL);
    EXPECT_TRUE(shows("[room] the chat client is reached no more"));
    EXPECT_TRUE(shows("[room] the room is open again"));
    EXPECT_TRUE(answers("'filter?", filter));
    const pid_t second = bridge();
    ASSERT_GT(second, 0);
    type("/quit");
    EXPECT_EQ(program->ends(patience), 0);
    EXPECT_TRUE(comes([&] { return !isBridge(second); }));
}

TEST_F(WindowProgram, LeavesNoBridgeWhenItIsKilled) {
    const pid_t left = bridge();
    ASSERT_GT(left, 0);
    ::kill(program->id(), SIGKILL);
    EXPECT_TRUE(comes([&] { return !isBridge(left); }));
}

TEST_F(WindowProgram, WorksTheOtherPlayersWindow) {
    client->tell("player 3. Night ride - Winamp");
    EXPECT_TRUE(answers("'amp", "3. Night ride<"));
    EXPECT_TRUE(answers("'wnext", "command 40048"));
    EXPECT_TRUE(client->tells("next track 3. Night ride<"));
    EXPECT_TRUE(answers("'wstop", "command 40047"));
}

} // namespace larkspin
