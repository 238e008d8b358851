// Two forms are in use. The old one has group codes of one byte, 255 ahead of a code of two; the one of today
// has codes of two bytes. The first pair is always "0 SECTION", which tells them apart. Values are little
// endian, texts end in a NUL byte.
#include "import/binary_drawing.h"

#include <bit>
#include <charconv>
#include <cstdint>

#include "platform/numbers.h"
#include "platform/run_error.h"

namespace kv {

namespace {

constexpr std::string_view BinaryHead("AutoCAD Binary DXF\r\n\x1a\0", 22);
constexpr std::size_t LongestBinaryText = 256 * 1024; // bytes; as of a line

enum class BinaryForm { Text, Double, Short, Long, LongLong, Byte, Chunk, Unknown };

struct FormRow {
    int First, Last;
    BinaryForm Form;
};

constexpr FormRow FormRows[] = {
    {0, 9, BinaryForm::Text},         {10, 59, BinaryForm::Double},   {60, 79, BinaryForm::Short},
    {90, 99, BinaryForm::Long},       {100, 105, BinaryForm::Text},   {110, 149, BinaryForm::Double},
    {160, 169, BinaryForm::LongLong}, {170, 179, BinaryForm::Short},  {210, 239, BinaryForm::Double},
    {270, 289, BinaryForm::Short},    {290, 299, BinaryForm::Byte},   {300, 309, BinaryForm::Text},
    {310, 319, BinaryForm::Chunk},    {320, 369, BinaryForm::Text},   {370, 389, BinaryForm::Short},
    {390, 399, BinaryForm::Text},     {400, 409, BinaryForm::Short},  {410, 419, BinaryForm::Text},
    {420, 429, BinaryForm::Long},     {430, 439, BinaryForm::Text},   {440, 459, BinaryForm::Long},
    {460, 469, BinaryForm::Double},   {470, 481, BinaryForm::Text},   {999, 1003, BinaryForm::Text},
    {1004, 1004, BinaryForm::Chunk},  {1005, 1009, BinaryForm::Text}, {1010, 1059, BinaryForm::Double},
    {1060, 1070, BinaryForm::Short},  {1071, 1071, BinaryForm::Long},
};

BinaryForm FormOfGroup(int code)
{
    for (const FormRow& row : FormRows)
        if (code >= row.First && code <= row.Last)
            return row.Form;
    return BinaryForm::Unknown;
}

class BinaryPairs {
  public:
    explicit BinaryPairs(std::string_view bytes) : Bytes(bytes) {}
    std::string Convert();

  private:
    [[noreturn]] void Refuse(const std::string& what) const
    {
        throw RunError{ErrorFileAccess,
                       "Binary DXF: " + what + " at byte " + WholeText(static_cast<long long>(At))};
    }
    std::uint64_t TakeWhole(std::size_t size);
    int TakeCode();
    void AddText();
    void AddChunk();
    void AddDouble();
    void AddValue(BinaryForm form, int code);

    std::string_view Bytes;
    std::size_t At = BinaryHead.size();
    bool HasWideCodes = false;
    bool IsAtEndOfFile = false;
    std::string Lines;
};

std::uint64_t BinaryPairs::TakeWhole(std::size_t size)
{
    if (Bytes.size() - At < size)
        Refuse("the file is cut");
    std::uint64_t whole = 0;
    for (std::size_t i = size; i > 0; --i)
        whole = whole << 8 | static_cast<unsigned char>(Bytes[At + i - 1]);
    At += size;
    return whole;
}

int BinaryPairs::TakeCode()
{
    if (HasWideCodes)
        return static_cast<int>(TakeWhole(2));
    constexpr std::uint64_t wide = 255;
    const std::uint64_t code = TakeWhole(1);
    return static_cast<int>(code == wide ? TakeWhole(2) : code);
}

void BinaryPairs::AddText()
{
    const std::size_t end = Bytes.find('\0', At);
    if (end == std::string_view::npos)
        Refuse("the file is cut");
    if (end - At > LongestBinaryText)
        Refuse("a text of more than " + WholeText(LongestBinaryText) + " bytes");
    for (const char c : Bytes.substr(At, end - At))
        Lines += c == '\n' || c == '\r' ? ' ' : c; // a line end would make a pair of it
    At = end + 1;
}

void BinaryPairs::AddChunk()
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    const std::size_t size = static_cast<std::size_t>(TakeWhole(1));
    if (Bytes.size() - At < size)
        Refuse("the file is cut");
    for (const char c : Bytes.substr(At, size)) {
        const auto byte = static_cast<unsigned char>(c);
        Lines += digits[byte >> 4];
        Lines += digits[byte & 15];
    }
    At += size;
}

void BinaryPairs::AddDouble()
{
    char text[32];
    const auto number = std::bit_cast<double>(TakeWhole(8));
    const std::to_chars_result end = std::to_chars(text, text + sizeof text, number);
    Lines.append(text, end.ptr);
}

void BinaryPairs::AddValue(BinaryForm form, int code)
{
    switch (form) {
    case BinaryForm::Text:
        AddText();
        return;
    case BinaryForm::Double:
        AddDouble();
        return;
    case BinaryForm::Short:
        Lines += WholeText(static_cast<std::int16_t>(TakeWhole(2)));
        return;
    case BinaryForm::Long:
        Lines += WholeText(static_cast<std::int32_t>(TakeWhole(4)));
        return;
    case BinaryForm::LongLong:
        Lines += WholeText(static_cast<std::int64_t>(TakeWhole(8)));
        return;
    case BinaryForm::Byte:
        Lines += WholeText(static_cast<long long>(TakeWhole(1)));
        return;
    case BinaryForm::Chunk:
        AddChunk();
        return;
    case BinaryForm::Unknown:
        Refuse("group code " + WholeText(code) + " is unknown");
    }
}

std::string BinaryPairs::Convert()
{
    HasWideCodes = Bytes.size() > At + 1 && Bytes[At] == '\0' && Bytes[At + 1] == '\0';
    while (!IsAtEndOfFile && At < Bytes.size()) {
        const int code = TakeCode();
        Lines += WholeText(code);
        Lines += '\n';
        const std::size_t value = Lines.size();
        AddValue(FormOfGroup(code), code);
        IsAtEndOfFile = code == 0 && std::string_view(Lines).substr(value) == "EOF";
        Lines += '\n';
    }
    return std::move(Lines);
}

} // namespace

bool IsBinaryDrawing(std::string_view head)
{
    return head.starts_with(BinaryHead);
}

std::string AsciiOfBinary(std::string_view bytes)
{
    return BinaryPairs(bytes).Convert();
}

} // namespace kv
