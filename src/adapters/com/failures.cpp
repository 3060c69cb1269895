#include "adapters/com/failures.h"

#include <cwchar>
#include <exception>
#include <new>
#include <string>

#include "adapters/com/identifiers.h"
#include "adapters/com/pointers.h"

namespace dossierkit::com {
namespace {

using environment::Failure;

constexpr unsigned long kControlFailures = 0x800A0000UL;

// Numbers of the environment are counted from 0x800A0000.
int NumberOf(HRESULT result) {
  const auto bits = static_cast<unsigned long>(result);
  return (bits & 0xFFFF0000UL) == kControlFailures ? static_cast<int>(bits & 0xFFFFUL)
                                                   : static_cast<int>(result);
}

HRESULT ResultOf(int number) {
  return number < 0
             ? static_cast<HRESULT>(number)
             : static_cast<HRESULT>(kControlFailures | (static_cast<unsigned long>(number) & 0xFFFFUL));
}

// What Windows itself says of a result; empty where it knows nothing.
std::string WordsOfSystem(HRESULT result) {
  wchar_t* words = nullptr;
  const DWORD length = FormatMessageW(
      FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
      static_cast<DWORD>(result), 0, reinterpret_cast<LPWSTR>(&words), 0, nullptr);
  std::wstring text(words ? words : L"", length);
  LocalFree(words);
  while (!text.empty() && std::wcschr(L" \r\n", text.back())) text.pop_back();
  return Utf8(text);
}

std::string WordsOf(HRESULT result, const std::string& told) {
  if (!told.empty()) return told;
  switch (result) {
    case DISP_E_UNKNOWNNAME:
    case DISP_E_MEMBERNOTFOUND: return "对象不支持该属性或方法";
    default: break;
  }
  if (std::string words = WordsOfSystem(result); !words.empty()) return words;
  char text[32];
  std::snprintf(text, sizeof text, "0x%08lX", static_cast<unsigned long>(result));
  return text;
}

std::string WordsOfThread() {
  Pointer<IErrorInfo> told;
  if (GetErrorInfo(0, told.Put()) != S_OK) return {};
  Bstr words;
  told->GetDescription(words.Put());
  return TextOf(words.Get());
}

void LeaveWords(const std::string& description) {
  Pointer<ICreateErrorInfo> created;
  if (FAILED(CreateErrorInfo(created.Put()))) return;
  created->SetGUID(kInterface);
  created->SetSource(Bstr(kProgId).Get());
  created->SetDescription(Bstr(description).Get());
  Pointer<IErrorInfo> told;
  if (SUCCEEDED(created->QueryInterface(IID_IErrorInfo, told.PutVoid()))) SetErrorInfo(0, told.Get());
}

}  // namespace

Failure FailureOf(HRESULT result, EXCEPINFO* info) {
  std::string told;
  if (result == DISP_E_EXCEPTION && info) {
    if (info->pfnDeferredFillIn) info->pfnDeferredFillIn(info);
    told = TextOf(info->bstrDescription);
    result = FAILED(info->scode) ? info->scode : info->wCode ? ResultOf(info->wCode) : E_FAIL;
  } else if (result != DISP_E_UNKNOWNNAME && result != DISP_E_MEMBERNOTFOUND) {
    told = WordsOfThread();
  }
  if (info) {
    SysFreeString(info->bstrSource);
    SysFreeString(info->bstrDescription);
    SysFreeString(info->bstrHelpFile);
    *info = {};
  }
  const bool unknown = result == DISP_E_UNKNOWNNAME || result == DISP_E_MEMBERNOTFOUND;
  return Failure(unknown ? kNoSuchMember : NumberOf(result), WordsOf(result, told));
}

HRESULT TellCaller() noexcept {
  try {
    try {
      throw;
    } catch (const Failure& failure) {
      LeaveWords(failure.description());
      return ResultOf(failure.number());
    } catch (const std::bad_alloc&) {
      return E_OUTOFMEMORY;
    } catch (const std::exception& failure) {
      LeaveWords(failure.what());
      return E_UNEXPECTED;
    }
  } catch (...) {
    return E_UNEXPECTED;
  }
}

}  // namespace dossierkit::com
