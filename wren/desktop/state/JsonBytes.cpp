#include "wren/desktop/state/JsonBytes.h"

#include <QStringDecoder>

#include <nlohmann/json.hpp>

namespace wren {

namespace {

bool IsUtf8(const std::string& bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
    return !text.isNull() && !decoder.hasError();
}

} // namespace

nlohmann::json JsonOfBytes(const std::string& bytes)
{
    if (bytes.empty() || IsUtf8(bytes))
        return bytes;
    nlohmann::json numbers = nlohmann::json::array();
    for (const unsigned char byte : bytes)
        numbers.push_back(byte);
    return numbers;
}

std::string BytesOfJson(const nlohmann::json& json)
{
    if (!json.is_array())
        return json.get<std::string>();
    std::string bytes;
    for (const nlohmann::json& number : json)
        bytes += static_cast<char>(number.get<unsigned char>());
    return bytes;
}

} // namespace wren
