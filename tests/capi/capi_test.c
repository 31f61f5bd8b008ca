/*
 * A host written in C that loads libmarlet and calls each of the six entry operations.
 *
 * usage: capi_test DATABASE WORK_FOLDER < /dev/null
 *
 * DATABASE is made beforehand with `marlet init`. The components are headless, so every screen
 * asks on standard input; at the end of input each screen closes at once and its operation
 * returns. Prints one line per check and "N passed, M failed"; exits non-zero on any failure.
 */
#define _POSIX_C_SOURCE 200809L

#include <marlet/marlet.h>

#include <fcntl.h>
#include <stdio.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

static int passed = 0;
static int failed = 0;

/* Where the terminal output of one operation is caught, and the standard output put aside. */
static char capturePath[512];
static int savedOutput = -1;

static void check(int condition, const char* what)
{
    if (condition) {
        ++passed;
        printf("PASS: %s\n", what);
    } else {
        ++failed;
        printf("FAIL: %s\n", what);
    }
    fflush(stdout);
}

/* Reaching this line is the check: an operation that hangs fails on the test's time limit, one
 * that crashes fails on the exit status. */
static void returned(const char* operation)
{
    char what[128];
    snprintf(what, sizeof what, "%s returns", operation);
    check(1, what);
}

static void beginCapture(void)
{
    fflush(stdout);
    savedOutput = dup(STDOUT_FILENO);
    const int file = open(capturePath, O_WRONLY | O_CREAT | O_TRUNC, 0644);
    dup2(file, STDOUT_FILENO);
    close(file);
}

/* Ends the capture, echoes what was caught, and tells whether it holds the text. */
static int endCapture(const char* expected)
{
    static char caught[16384];
    fflush(stdout);
    dup2(savedOutput, STDOUT_FILENO);
    close(savedOutput);
    FILE* file = fopen(capturePath, "r");
    size_t length = file ? fread(caught, 1, sizeof caught - 1, file) : 0;
    if (file)
        fclose(file);
    caught[length] = '\0';
    fputs(caught, stdout);
    return strstr(caught, expected) != NULL;
}

/* The operation returned and showed the screen with the caption on the terminal. */
static void showedScreen(const char* operation, const char* caption)
{
    char expected[128];
    snprintf(expected, sizeof expected, "== %s ==", caption);
    const int shown = endCapture(expected);
    returned(operation);
    char what[192];
    snprintf(what, sizeof what, "%s showed \"%s\"", operation, caption);
    check(shown, what);
}

static int isFolder(const char* path)
{
    struct stat info;
    return stat(path, &info) == 0 && S_ISDIR(info.st_mode);
}

static void joinPath(char* out, size_t size, const char* folder, const char* name)
{
    snprintf(out, size, "%s/%s", folder, name);
}

static void checkVersion(void)
{
    check(strcmp(marlet_version(), "2.3.1") == 0, "marlet_version() is \"2.3.1\"");
}

static void checkOptionsFlags(marlet_component* component, const char* db, int16_t powerIn)
{
    int16_t tPower = powerIn;
    int16_t clientUp = 7; /* anything but 0, so that the write-back shows */
    beginCapture();
    marlet_LoadOptions(component, db, "Norvantis", "ADMINISTRATOR", &tPower, &clientUp, 5, "6000", "Port 1", 0);
    showedScreen("LoadOptions", "Options");
    char what[128];
    snprintf(what, sizeof what, "LoadOptions hands back tPower %d for %d", tPower, powerIn);
    check(tPower == powerIn, what);
    snprintf(what, sizeof what, "LoadOptions hands back ClientUp 0 (got %d)", clientUp);
    check(clientUp == 0, what);
}

static void callEveryOperation(marlet_component* component, const char* db)
{
    const char* path = "/opt/server/server.exe";
    beginCapture();
    marlet_LoadAccountInfo(component, db, "Norvantis", "");
    showedScreen("LoadAccountInfo", "Ticket Information");
    beginCapture();
    marlet_LoadGenAc(component, db, "Norvantis", "ADMINISTRATOR", -1, path);
    showedScreen("LoadGenAc", "Generate Ticket");
    /* LoadGenAc left the connection open; the settings screen goes on with it. */
    checkOptionsFlags(component, db, -1);
    checkOptionsFlags(component, db, 0);
    /* The password gate closes at the end of input, which refuses: no generate screen follows. */
    beginCapture();
    marlet_LoadGenAcc(component, db, "Norvantis", "ADMINISTRATOR", 0, path);
    showedScreen("LoadGenAcc", "Enter Password");
    beginCapture();
    marlet_LoadRecycleBin(component, db, "Norvantis");
    showedScreen("LoadRecycleBin", "Recycle Bin - Norvantis");
    beginCapture();
    marlet_LoadAutoGen(component, db, "Norvantis", "ADMINISTRATOR", 0, path);
    showedScreen("LoadAutoGen", "Enter Password");
}

static void checkNullArguments(marlet_component* component)
{
    int16_t clientUp = 7;
    marlet_LoadOptions(component, NULL, NULL, NULL, NULL, &clientUp, 5, NULL, NULL, 0);
    check(clientUp == 0, "LoadOptions with NULL strings and a NULL tPower hands back ClientUp 0");
    marlet_LoadAccountInfo(component, NULL, NULL, NULL);
    marlet_LoadGenAcc(component, NULL, NULL, NULL, 0, NULL);
    returned("every operation with NULL strings");
    marlet_LoadRecycleBin(NULL, "x", "Norvantis");
    marlet_destroy(NULL);
    returned("an operation on a NULL component, and marlet_destroy(NULL),");
}

/* Two components share one application object; it goes with the last of them and comes back
 * with the next. */
static void checkComponentLifetimes(const char* db, const char* work)
{
    char prefs[512];
    joinPath(prefs, sizeof prefs, work, "prefs-second");
    marlet_component* first = marlet_create(prefs, NULL, MARLET_HEADLESS);
    marlet_component* second = marlet_create(prefs, NULL, MARLET_HEADLESS);
    check(first != NULL && second != NULL, "two components exist side by side");
    marlet_LoadRecycleBin(second, db, "Norvantis");
    marlet_destroy(first);
    beginCapture();
    marlet_LoadRecycleBin(second, db, "Norvantis");
    showedScreen("LoadRecycleBin after the first component was destroyed", "Recycle Bin - Norvantis");
    marlet_destroy(second);

    marlet_component* again = marlet_create(prefs, NULL, MARLET_HEADLESS);
    check(again != NULL, "a component is created again after the last one was destroyed");
    beginCapture();
    marlet_LoadAccountInfo(again, db, "Norvantis", "");
    showedScreen("LoadAccountInfo on a component made anew", "Ticket Information");
    marlet_destroy(again);

    /* Without MARLET_HEADLESS and with a display the screens would be real windows: create and
     * destroy only. */
    marlet_component* desktop = marlet_create(prefs, NULL, 0);
    check(desktop != NULL, "a component without MARLET_HEADLESS is created");
    marlet_destroy(desktop);
}

int main(int argc, char** argv)
{
    if (argc != 3) {
        fprintf(stderr, "usage: %s DATABASE WORK_FOLDER < /dev/null\n", argv[0]);
        return 2;
    }
    const char* db = argv[1];
    const char* work = argv[2];
    char prefs[512];
    char appFolder[512];
    joinPath(prefs, sizeof prefs, work, "prefs");
    joinPath(appFolder, sizeof appFolder, work, "app");
    joinPath(capturePath, sizeof capturePath, work, "terminal.txt");

    checkVersion();
    check(!isFolder(appFolder), "the application folder does not exist before marlet_create");
    marlet_component* component = marlet_create(prefs, appFolder, MARLET_HEADLESS);
    check(component != NULL, "marlet_create with MARLET_HEADLESS gives a component");
    if (component) {
        check(isFolder(appFolder), "marlet_create makes the application folder it is given");
        callEveryOperation(component, db);
        checkNullArguments(component);
        marlet_destroy(component);
        returned("marlet_destroy");
    }
    checkComponentLifetimes(db, work);

    printf("%d passed, %d failed\n", passed, failed);
    return failed == 0 ? 0 : 1;
}
