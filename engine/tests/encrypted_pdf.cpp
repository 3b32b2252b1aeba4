#include "encrypted_pdf.h"

#include <math.h>
#include <stdint.h>
#include <stdio.h>

#include <array>
#include <utility>

#include "support.h"

namespace {

constexpr int kPermissions = -4;
constexpr size_t kKeyLength = 5;

std::string LittleEndian(uint64_t value, int bytes) {
  std::string text;
  for (int i = 0; i < bytes; ++i) {
    text += static_cast<char>(value >> (8 * i) & 0xFF);
  }
  return text;
}

uint32_t WordAt(const std::string& bytes, size_t at) {
  uint32_t word = 0;
  for (int i = 3; i >= 0; --i) {
    word = word << 8 | static_cast<unsigned char>(bytes[at + i]);
  }
  return word;
}

// One block of MD5, 64 bytes at |at|.
void Digest(std::array<uint32_t, 4>& state, const std::string& bytes, size_t at) {
  static constexpr int kTurns[4][4] = {{7, 12, 17, 22}, {5, 9, 14, 20}, {4, 11, 16, 23}, {6, 10, 15, 21}};
  auto [a, b, c, d] = state;
  for (int i = 0; i < 64; ++i) {
    const int round = i / 16;
    static constexpr int kStep[4] = {1, 5, 3, 7};
    static constexpr int kStart[4] = {0, 1, 5, 0};
    const uint32_t mixed = round == 0   ? (b & c) | (~b & d)
                           : round == 1 ? (d & b) | (~d & c)
                           : round == 2 ? b ^ c ^ d
                                        : c ^ (b | ~d);
    const auto constant = static_cast<uint32_t>(static_cast<uint64_t>(fabs(sin(i + 1.0)) * 4294967296.0));
    const uint32_t sum = a + mixed + constant + WordAt(bytes, at + 4 * ((kStep[round] * i + kStart[round]) % 16));
    const int turn = kTurns[round][i % 4];
    a = std::exchange(d, std::exchange(c, std::exchange(b, b + (sum << turn | sum >> (32 - turn)))));
  }
  state = {state[0] + a, state[1] + b, state[2] + c, state[3] + d};
}

std::string Md5(std::string bytes) {
  const uint64_t bits = 8 * bytes.size();
  bytes += '\x80';
  bytes.append((120 - bytes.size() % 64) % 64, '\0');
  bytes += LittleEndian(bits, 8);
  std::array<uint32_t, 4> state = {0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476};
  for (size_t at = 0; at < bytes.size(); at += 64) {
    Digest(state, bytes, at);
  }
  std::string digest;
  for (uint32_t word : state) {
    digest += LittleEndian(word, 4);
  }
  return digest;
}

std::string Rc4(const std::string& key, std::string text) {
  std::array<unsigned char, 256> box;
  for (int i = 0; i < 256; ++i) {
    box[i] = static_cast<unsigned char>(i);
  }
  for (int i = 0, k = 0; i < 256; ++i) {
    k = (k + box[i] + static_cast<unsigned char>(key[i % key.size()])) % 256;
    std::swap(box[i], box[k]);
  }
  int i = 0, k = 0;
  for (char& letter : text) {
    i = (i + 1) % 256;
    k = (k + box[i]) % 256;
    std::swap(box[i], box[k]);
    letter = static_cast<char>(letter ^ box[(box[i] + box[k]) % 256]);
  }
  return text;
}

std::string Padded(const std::string& password) {
  static constexpr unsigned char kPadding[] = {
      0x28, 0xBF, 0x4E, 0x5E, 0x4E, 0x75, 0x8A, 0x41, 0x64, 0x00, 0x4E, 0x56, 0xFF, 0xFA, 0x01, 0x08,
      0x2E, 0x2E, 0x00, 0xB6, 0xD0, 0x68, 0x3E, 0x80, 0x2F, 0x0C, 0xA9, 0xFE, 0x64, 0x53, 0x69, 0x7A};
  return (password + std::string(reinterpret_cast<const char*>(kPadding), sizeof kPadding)).substr(0, 32);
}

std::string Hex(const std::string& bytes) {
  std::string hex = "<";
  for (unsigned char byte : bytes) {
    char digits[3];
    snprintf(digits, sizeof digits, "%02X", byte);
    hex += digits;
  }
  return hex + ">";
}

// The strings of a dictionary, encrypted.
std::string EncryptStrings(const std::string& text, const std::string& key) {
  std::string encrypted;
  size_t at = 0;
  for (size_t open = text.find('('); open != text.npos; open = text.find('(', at)) {
    const size_t close = text.find(')', open);
    encrypted += text.substr(at, open - at) + Hex(Rc4(key, text.substr(open + 1, close - open - 1)));
    at = close + 1;
  }
  return encrypted + text.substr(at);
}

std::string EncryptObject(const std::string& body, const std::string& key) {
  static const std::string kStart = "stream\n", kEnd = "\nendstream";
  const size_t start = body.find(kStart);
  if (start == body.npos) {
    return EncryptStrings(body, key);
  }
  const size_t data = start + kStart.size();
  const size_t end = body.rfind(kEnd);
  return EncryptStrings(body.substr(0, data), key) + Rc4(key, body.substr(data, end - data)) +
         body.substr(end);
}

std::string Md5Repeatedly(std::string text) {
  for (int i = 0; i <= 50; ++i) {
    text = Md5(text);
  }
  return text;
}

// As revisions 3 and 4 encrypt the entries of passwords.
std::string Rc4Repeatedly(const std::string& key, std::string text) {
  for (int i = 0; i < 20; ++i) {
    std::string turned = key;
    for (char& letter : turned) {
      letter = static_cast<char>(letter ^ i);
    }
    text = Rc4(turned, text);
  }
  return text;
}

std::string ObjectKey(const std::string& key, size_t number) {
  return Md5(key + LittleEndian(number, 3) + LittleEndian(0, 2)).substr(0, key.size() + 5 > 16 ? 16 : key.size() + 5);
}

}  // namespace

std::string MakeEncryptedPdf(const std::vector<std::string>& objects, const Encryption& encryption) {
  const std::string id = encryption.with_id ? std::string(16, 'q') : "";
  const std::string owner = Rc4Repeatedly(Md5Repeatedly(Padded("owner")), Padded(""));
  const std::string readable = encryption.plain_metadata != 0 ? std::string(4, '\xFF') : "";
  const std::string key =
      Md5Repeatedly(Padded("") + owner + LittleEndian(static_cast<uint32_t>(kPermissions), 4) + id + readable);
  const std::string user = Rc4Repeatedly(key, Md5(Padded("") + id)) + std::string(16, '\0');
  const std::string dictionary =
      "<< /Filter /Standard /V 4 /R 4 /Length 128 /P " + std::to_string(kPermissions) + " /O " + Hex(owner) +
      " /U " + Hex(user) + (readable.empty() ? "" : " /EncryptMetadata false") +
      " /CF << /StdCF << /CFM /V2 /AuthEvent /DocOpen /Length 16 >> >> /StmF /StdCF /StrF /StdCF >>";
  const size_t own_number = encryption.direct ? 0 : objects.size() + 1;
  const auto encrypt = [&](size_t number, const std::string& body) {
    const bool plain = number == static_cast<size_t>(encryption.plain_metadata) || number == own_number;
    return plain ? body : EncryptObject(body, ObjectKey(key, number));
  };
  std::string trailer = id.empty() ? "" : "/ID [" + Hex(id) + Hex(id) + "] ";
  trailer += "/Encrypt " + (encryption.direct ? dictionary : std::to_string(own_number) + " 0 R");
  std::vector<std::string> bodies = objects;
  if (!encryption.direct) {
    bodies.push_back(dictionary);
  }
  if (encryption.packed) {
    return MakePackedPdf(bodies, trailer, encrypt);
  }
  for (size_t i = 0; i < bodies.size(); ++i) {
    bodies[i] = encrypt(i + 1, bodies[i]);
  }
  return MakePdf(bodies, trailer);
}

std::string MakeEncryptedPdf(const std::vector<std::string>& objects, const std::string& password) {
  const std::string id(16, 'q');
  const std::string owner = Rc4(Md5(Padded(password)).substr(0, kKeyLength), Padded(password));
  const std::string key =
      Md5(Padded(password) + owner + LittleEndian(static_cast<uint32_t>(kPermissions), 4) + id)
          .substr(0, kKeyLength);
  std::vector<std::string> encrypted;
  for (size_t i = 0; i < objects.size(); ++i) {
    encrypted.push_back(EncryptObject(
        objects[i], Md5(key + LittleEndian(i + 1, 3) + LittleEndian(0, 2)).substr(0, kKeyLength + 5)));
  }
  encrypted.push_back("<< /Filter /Standard /V 1 /R 2 /P " + std::to_string(kPermissions) + " /O " +
                      Hex(owner) + " /U " + Hex(Rc4(key, Padded(""))) + " >>");
  return MakePdf(encrypted, "/ID [" + Hex(id) + Hex(id) + "] /Encrypt " +
                                std::to_string(encrypted.size()) + " 0 R");
}
