#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <new>
#include <string>
#include <string_view>
#include <system_error>
#include <type_traits>
#include <utility>
#include <variant>

#include <platform/com/Variant.h>
#include <platform/text/Utf8.h>

namespace {

// The value between two types: truth, an integer of either kind, or a real number with
// the digits that its text has.
struct Real {
    double value;
    int digits;
};
using Number = std::variant<bool, std::int64_t, std::uint64_t, Real>;

constexpr int kDoubleDigits = 15;
constexpr int kFloatDigits = 7;

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view space = " \t\n\v\f\r";
    const std::size_t first = std::min(text.find_first_not_of(space), text.size());
    return text.substr(first, text.find_last_not_of(space) + 1 - first);
}

bool EqualsWord(std::string_view text, std::string_view lowerWord) {
    const auto same = [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a + 32 : a) == b; };
    return std::equal(text.begin(), text.end(), lowerWord.begin(), lowerWord.end(), same);
}

template <class T>
std::errc Read(std::string_view text, T& value) {
    const char* end = text.data() + text.size();
    const std::from_chars_result result = std::from_chars(text.data(), end, value);
    if (result.ec == std::errc() && result.ptr != end) return std::errc::invalid_argument;
    return result.ec;
}

// Whether a decimal number that no double can hold is too small rather than too large.
bool IsTiny(std::string_view text) {
    const std::size_t exponent = text.find_first_of("eE");
    if (exponent != std::string_view::npos) return text.substr(exponent + 1, 1) == "-";
    return text.find_first_of("123456789") > text.find('.');
}

HRESULT ReadReal(std::string_view text, Number& number) {
    double value = 0;
    const std::errc error = Read(text, value);
    if (error == std::errc::invalid_argument) return DISP_E_TYPEMISMATCH;
    if (error == std::errc::result_out_of_range && !IsTiny(text)) return DISP_E_OVERFLOW;
    number = Real{value, kDoubleDigits};
    return S_OK;
}

HRESULT ReadText(BSTR string, Number& number) {
    const std::string bytes = string == nullptr
                                  ? std::string()
                                  : Utf8FromWide(std::wstring_view(string, SysStringLen(string)));
    std::string_view text = Trimmed(bytes);
    const bool isSigned = text.starts_with('+') || text.starts_with('-');
    const std::string_view digits = text.substr(isSigned ? 1 : 0);
    // Words such as "inf" are no numbers here.
    if (digits.find_first_of("0123456789.") != 0) return DISP_E_TYPEMISMATCH;
    if (text.starts_with('+')) text = digits;
    std::int64_t integer;
    if (Read(text, integer) == std::errc()) {
        number = integer;
        return S_OK;
    }
    std::uint64_t large;
    if (Read(text, large) == std::errc()) {
        number = large;
        return S_OK;
    }
    return ReadReal(text, number);
}

bool ReadTruth(BSTR string, Number& number) {
    const std::string bytes = Utf8FromWide(std::wstring_view(string, SysStringLen(string)));
    const std::string_view text = Trimmed(bytes);
    if (EqualsWord(text, "true")) {
        number = true;
    } else if (EqualsWord(text, "false")) {
        number = false;
    } else {
        return false;
    }
    return true;
}

HRESULT ToNumber(const VARIANT& from, VARTYPE target, Number& number) {
    switch (from.vt) {
        case VT_EMPTY:
            number = std::int64_t{0};
            return S_OK;
        case VT_BOOL:
            number = from.boolVal != VARIANT_FALSE;
            return S_OK;
        case VT_I1:
            number = std::int64_t{from.cVal};
            return S_OK;
        case VT_I2:
            number = std::int64_t{from.iVal};
            return S_OK;
        case VT_I4:
        case VT_INT:
            number = std::int64_t{from.lVal};
            return S_OK;
        case VT_I8:
            number = from.llVal;
            return S_OK;
        case VT_UI1:
            number = std::uint64_t{from.bVal};
            return S_OK;
        case VT_UI2:
            number = std::uint64_t{from.uiVal};
            return S_OK;
        case VT_UI4:
        case VT_UINT:
            number = std::uint64_t{from.ulVal};
            return S_OK;
        case VT_UI8:
            number = from.ullVal;
            return S_OK;
        case VT_R4:
            number = Real{from.fltVal, kFloatDigits};
            return S_OK;
        case VT_R8:
        case VT_DATE:
            number = Real{from.dblVal, kDoubleDigits};
            return S_OK;
        case VT_BSTR:
            if (target == VT_DATE) return DISP_E_TYPEMISMATCH;
            if (target == VT_BOOL && from.bstrVal != nullptr && ReadTruth(from.bstrVal, number))
                return S_OK;
            return ReadText(from.bstrVal, number);
        default:
            return DISP_E_TYPEMISMATCH;
    }
}

template <class T>
bool InRange(double rounded) {
    // The limits as doubles: the upper one is the first value that does not fit.
    constexpr double low = static_cast<double>(std::numeric_limits<T>::min());
    constexpr double beyond =
        2.0 * static_cast<double>(T{1} << (std::numeric_limits<T>::digits - 1));
    return rounded >= low && rounded < beyond;
}

template <class T>
struct ToInteger {
    T& value;

    HRESULT operator()(bool truth) const {
        value = truth ? static_cast<T>(-1) : T{0};
        return S_OK;
    }
    template <class Integer>
    requires std::is_integral_v<Integer> HRESULT operator()(Integer number) const {
        if (!std::in_range<T>(number)) return DISP_E_OVERFLOW;
        value = static_cast<T>(number);
        return S_OK;
    }
    HRESULT operator()(const Real& real) const {
        const double rounded = std::nearbyint(real.value);
        if (!InRange<T>(rounded)) return DISP_E_OVERFLOW;
        value = static_cast<T>(rounded);
        return S_OK;
    }
};

template <class T>
HRESULT Store(const Number& number, T& value) {
    return std::visit(ToInteger<T>{value}, number);
}

double AsDouble(const Number& number) {
    struct Visitor {
        double operator()(bool truth) const { return truth ? -1 : 0; }
        double operator()(std::int64_t value) const { return static_cast<double>(value); }
        double operator()(std::uint64_t value) const { return static_cast<double>(value); }
        double operator()(const Real& real) const { return real.value; }
    };
    return std::visit(Visitor(), number);
}

HRESULT StoreFloat(const Number& number, float& value) {
    const double wide = AsDouble(number);
    if (std::isfinite(wide) && std::abs(wide) > double{std::numeric_limits<float>::max()})
        return DISP_E_OVERFLOW;
    value = static_cast<float>(wide);
    return S_OK;
}

std::string RealText(const Real& real) {
    char text[32];
    const std::to_chars_result result = std::to_chars(text, text + sizeof text, real.value,
                                                      std::chars_format::general, real.digits);
    std::replace(text, result.ptr, 'e', 'E');
    return {text, result.ptr};
}

std::string NumberText(const Number& number, bool words) {
    struct Visitor {
        bool words;
        std::string operator()(bool truth) const {
            if (words) return truth ? "True" : "False";
            return truth ? "-1" : "0";
        }
        std::string operator()(std::int64_t value) const { return std::to_string(value); }
        std::string operator()(std::uint64_t value) const { return std::to_string(value); }
        std::string operator()(const Real& real) const { return RealText(real); }
    };
    return std::visit(Visitor{words}, number);
}

HRESULT StoreText(const VARIANT& from, USHORT flags, BSTR& string) {
    std::string text;
    if (from.vt == VT_DATE) return DISP_E_TYPEMISMATCH;
    if (from.vt != VT_EMPTY) {
        Number number;
        const HRESULT result = ToNumber(from, VT_BSTR, number);
        if (FAILED(result)) return result;
        text = NumberText(number, (flags & VARIANT_ALPHABOOL) != 0);
    }
    const std::wstring wide = WideFromUtf8(text);
    string = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
    return string == nullptr ? E_OUTOFMEMORY : S_OK;
}

HRESULT StoreNumber(const Number& number, VARIANT& to) {
    switch (to.vt) {
        case VT_BOOL:
            to.boolVal = AsDouble(number) != 0 ? VARIANT_TRUE : VARIANT_FALSE;
            return S_OK;
        case VT_I1:
            return Store(number, to.cVal);
        case VT_UI1:
            return Store(number, to.bVal);
        case VT_I2:
            return Store(number, to.iVal);
        case VT_UI2:
            return Store(number, to.uiVal);
        case VT_I4:
        case VT_INT:
            return Store(number, to.lVal);
        case VT_UI4:
        case VT_UINT:
            return Store(number, to.ulVal);
        case VT_I8:
            return Store(number, to.llVal);
        case VT_UI8:
            return Store(number, to.ullVal);
        case VT_R4:
            return StoreFloat(number, to.fltVal);
        case VT_R8:
        case VT_DATE:
            to.dblVal = AsDouble(number);
            return S_OK;
        default:
            return DISP_E_TYPEMISMATCH;
    }
}

// The value of `from`, which is no reference, in the type of `to`.
HRESULT Convert(const VARIANT& from, USHORT flags, VARIANT& to) try {
    if (to.vt == VT_BSTR) return StoreText(from, flags, to.bstrVal);
    Number number;
    const HRESULT result = ToNumber(from, to.vt, number);
    return FAILED(result) ? result : StoreNumber(number, to);
} catch (const std::bad_alloc&) {
    // Texts pass through the standard library's own memory.
    return E_OUTOFMEMORY;
}

HRESULT ConvertCopy(const VARIANT& from, USHORT flags, VARTYPE type, VARIANT& converted) {
    if (from.vt == type) return VariantCopy(&converted, &from);
    converted.vt = type;
    const HRESULT result = Convert(from, flags, converted);
    if (FAILED(result)) VariantInit(&converted);
    return result;
}

}  // namespace

HRESULT VariantChangeType(VARIANT* to, const VARIANT* from, USHORT flags, VARTYPE type) {
    if (to == nullptr || from == nullptr) return E_INVALIDARG;
    if (!IsVariantType(type)) return DISP_E_BADVARTYPE;
    VARIANT value = {};
    HRESULT result = VariantCopyInd(&value, from);
    if (FAILED(result)) return result;
    VARIANT converted = {};
    result = ConvertCopy(value, flags, type, converted);
    VariantClear(&value);
    if (FAILED(result)) return result;
    result = VariantClear(to);
    if (FAILED(result)) {
        VariantClear(&converted);
        return result;
    }
    *to = converted;
    return S_OK;
}
