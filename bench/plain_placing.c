/* What a conversion must do with files and nothing else, as a yardstick: reads some, writes copies beside
   their places, flushes them, moves them, flushes the folders.
   plain_placing READ... -- CONTENTS PLACE [CONTENTS PLACE]... */
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

enum { LONGEST_PATH = 4096 };

static char *read_whole(const char *path, size_t *length)
{
    const int file = open(path, O_RDONLY);
    struct stat status;
    if (file < 0 || fstat(file, &status) != 0)
        exit(1);
    char *const contents = malloc((size_t)status.st_size + 1);
    const ssize_t got = contents == NULL ? -1 : read(file, contents, (size_t)status.st_size);
    close(file);
    if (got != status.st_size)
        exit(1);
    *length = (size_t)got;
    return contents;
}

static void aside_of(const char *place, char *aside)
{
    snprintf(aside, LONGEST_PATH, "%s.aside", place);
}

static void write_aside(const char *contents_path, const char *place)
{
    char aside[LONGEST_PATH];
    size_t length = 0;
    char *const contents = read_whole(contents_path, &length);
    aside_of(place, aside);
    const int file = open(aside, O_WRONLY | O_CREAT | O_TRUNC, 0666);
    if (file < 0 || write(file, contents, length) != (ssize_t)length || fsync(file) != 0 || close(file) != 0)
        exit(1);
    free(contents);
}

static void move_over(const char *place)
{
    char aside[LONGEST_PATH];
    aside_of(place, aside);
    if (rename(aside, place) != 0)
        exit(1);
}

static void flush_folder_of(const char *place)
{
    char folder[LONGEST_PATH];
    snprintf(folder, sizeof folder, "%s", place);
    char *const slash = strrchr(folder, '/');
    if (slash == NULL)
        exit(1);
    *slash = '\0';
    const int handle = open(folder, O_RDONLY | O_DIRECTORY);
    if (handle < 0 || fsync(handle) != 0 || close(handle) != 0)
        exit(1);
}

int main(int count, char **words)
{
    int at = 1;
    for (; at < count && strcmp(words[at], "--") != 0; ++at) {
        size_t length = 0;
        free(read_whole(words[at], &length));
    }
    const int first = at + 1;
    for (int i = first; i + 1 < count; i += 2)
        write_aside(words[i], words[i + 1]);
    for (int i = first; i + 1 < count; i += 2)
        move_over(words[i + 1]);
    for (int i = first; i + 1 < count; i += 2)
        flush_folder_of(words[i + 1]);
    return first + 1 < count ? 0 : 1;
}
