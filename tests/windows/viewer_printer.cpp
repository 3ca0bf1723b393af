#include "viewer_printer.h"

#include <windows.h>

#include <winspool.h>

#include <cstdio>

namespace drive {
namespace {

// The functions of the spooler take their names as what may be written to.
wchar_t kPrinter[] = L"Viewer test";
wchar_t kDriver[] = L"Viewer test PostScript";
wchar_t kDriverFile[] = L"wineps.drv";
wchar_t kProcessor[] = L"winprint";
wchar_t kDataType[] = L"RAW";
constexpr DWORD kPathChars = 300;

// What Wine's driver must know of a printer: one size of paper, one resolution, fonts that it has.
constexpr char kDescription[] = R"ppd(*PPD-Adobe: "4.3"
*FormatVersion: "4.3"
*FileVersion: "1.0"
*LanguageVersion: English
*LanguageEncoding: ISOLatin1
*PCFileName: "VIEWER.PPD"
*Product: "(Viewer)"
*PSVersion: "(3010.000) 550"
*Manufacturer: "None"
*ModelName: "Viewer test"
*NickName: "Viewer test"
*LanguageLevel: "3"
*ColorDevice: True
*DefaultColorSpace: RGB
*FileSystem: False
*TTRasterizer: Type42
*DefaultResolution: 600dpi
*Resolution 600dpi: "<</HWResolution[600 600]>>setpagedevice"
*OpenUI *PageSize: PickOne
*DefaultPageSize: A4
*PageSize A4/A4: "<</PageSize[595 842]>>setpagedevice"
*CloseUI: *PageSize
*OpenUI *PageRegion: PickOne
*DefaultPageRegion: A4
*PageRegion A4/A4: "<</PageSize[595 842]>>setpagedevice"
*CloseUI: *PageRegion
*DefaultImageableArea: A4
*ImageableArea A4/A4: "18 36 577 806"
*DefaultPaperDimension: A4
*PaperDimension A4/A4: "595 842"
*DefaultFont: Courier
*Font Courier: Standard "(002.004S)" Standard ROM
)ppd";

std::wstring description_path() {
  wchar_t folder[kPathChars] = {};
  DWORD needed = 0;
  const BOOL known = GetPrinterDriverDirectoryW(nullptr, nullptr, 1, reinterpret_cast<BYTE*>(folder),
                                                sizeof folder, &needed);
  return known != FALSE ? std::wstring(folder) + L"\\viewer-test.ppd" : L"";
}

bool write_description(const std::wstring& path) {
  FILE* file = _wfopen(path.c_str(), L"wb");
  if (file == nullptr) return false;
  std::fwrite(kDescription, 1, sizeof kDescription - 1, file);
  return std::fclose(file) == 0;
}

bool add_printer(std::wstring description, std::wstring port) {
  DRIVER_INFO_3W driver{};
  driver.cVersion = 3;
  driver.pName = kDriver;
  driver.pDriverPath = kDriverFile;
  driver.pConfigFile = kDriverFile;
  driver.pDataFile = description.data();
  driver.pDefaultDataType = kDataType;
  AddPrinterDriverExW(nullptr, 3, reinterpret_cast<BYTE*>(&driver), APD_COPY_NEW_FILES);
  PRINTER_INFO_2W printer{};
  printer.pPrinterName = kPrinter;
  printer.pPortName = port.data();
  printer.pDriverName = kDriver;
  printer.pPrintProcessor = kProcessor;
  printer.pDatatype = kDataType;
  HANDLE handle = AddPrinterW(nullptr, 2, reinterpret_cast<BYTE*>(&printer));
  if (handle == nullptr) return false;
  ClosePrinter(handle);
  return SetDefaultPrinterW(kPrinter) != FALSE;
}

}  // namespace

TestPrinter::TestPrinter(const std::wstring& port) {
  wchar_t name[kPathChars] = {};
  DWORD size = kPathChars;
  if (GetDefaultPrinterW(name, &size) != FALSE) former_default_ = name;
  const std::wstring description = description_path();
  if (description.empty() || !write_description(description) || !add_printer(description, port)) return;
  HDC context = CreateDCW(L"WINSPOOL", kPrinter, nullptr, nullptr);
  works_ = context != nullptr;
  if (context != nullptr) DeleteDC(context);
}

TestPrinter::~TestPrinter() {
  HANDLE printer = nullptr;
  PRINTER_DEFAULTSW rights = {nullptr, nullptr, PRINTER_ALL_ACCESS};
  if (OpenPrinterW(kPrinter, &printer, &rights) != FALSE) {
    DeletePrinter(printer);
    ClosePrinter(printer);
  }
  DeletePrinterDriverW(nullptr, nullptr, kDriver);
  if (!former_default_.empty()) SetDefaultPrinterW(former_default_.c_str());
  DeleteFileW(description_path().c_str());
}

bool has_printer() {
  DWORD needed = 0;
  DWORD count = 0;
  EnumPrintersW(PRINTER_ENUM_LOCAL | PRINTER_ENUM_CONNECTIONS, nullptr, 4, nullptr, 0, &needed, &count);
  return needed > 0;
}

}  // namespace drive
