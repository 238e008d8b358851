; The installer. packaging/windows/package.sh gives VERSION, NUMBERS (1.2.3.0), SIZE (KB), STAGE (the folder
; of the files), FILES (the lists of the folders) and OUTPUT.
;
; Without a word:  Korvanti-Setup.exe /S [/ASSOC] [/D=C:\folder]     Uninstall.exe /S
; Exit status: 0 done, 1 stopped by the person, 2 not possible, 3 the program is running.
;
; What a shop has made its own is never overwritten and never removed: KV90.INI, the machine's files, and
; whatever else came into the folder. Only files that were installed are removed, each by its name.

Unicode true
Target amd64-unicode
!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh

!define PRODUCT_KEY "Software\Korvanti"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Korvanti"
!define CLASSES "Software\Classes"
!define DRAWING "Korvanti.Drawing"

Name "Korvanti"
OutFile "${OUTPUT}"
SetCompressor /SOLID lzma
ManifestDPIAware true
; An administrator installs for everybody, another person for himself.
RequestExecutionLevel highest
AllowSkipFiles off
ShowInstDetails show
ShowUninstDetails show
BrandingText "Korvanti ${VERSION}"
VIProductVersion "${NUMBERS}"
VIAddVersionKey "ProductName" "Korvanti"
VIAddVersionKey "CompanyName" "Korvanti"
VIAddVersionKey "FileDescription" "Installs Korvanti"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" ""

!define MUI_ICON "${STAGE}/korvanti.ico"
!define MUI_UNICON "${STAGE}/korvanti.ico"
!define MUI_ABORTWARNING
!define MUI_COMPONENTSPAGE_SMALLDESC
!define MUI_DIRECTORYPAGE_TEXT_TOP "Korvanti keeps its settings (KV90.INI) beside its programs. Choose a folder \
in which everybody who converts drawings may write: one of its own, or the folder of the control."
!define MUI_UNCONFIRMPAGE_TEXT_TOP "The programs, the guide and the example are removed. KV90.INI and all files \
that were not installed stay where they are."
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"
!include "${FILES}"

; A program that runs cannot be replaced, and would go on with what was half replaced.
!macro StopWhileRunning PROGRAM
    retry_${PROGRAM}:
    ${If} ${FileExists} "$INSTDIR\${PROGRAM}"
        ClearErrors
        FileOpen $0 "$INSTDIR\${PROGRAM}" a
        ${If} ${Errors}
            MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$INSTDIR\${PROGRAM} is in use, or you have no right to \
replace it. End the program and try again." /SD IDCANCEL IDRETRY retry_${PROGRAM}
            SetErrorLevel 3
            Quit
        ${EndIf}
        FileClose $0
    ${EndIf}
!macroend

!macro NoFolder PATH
    MessageBox MB_OK|MB_ICONSTOP "The folder ${PATH} cannot be made." /SD IDOK
    SetErrorLevel 2
    Quit
!macroend

Function .onInit
    SetRegView 64
    UserInfo::GetAccountType
    Pop $0
    ${If} $0 == "Admin"
        SetShellVarContext all
    ${EndIf}
    ${If} $INSTDIR == ""
        ; A folder of /D that cannot be, as on a drive that is not there, has been dropped without a word.
        System::Call 'kernel32::GetCommandLine() t .r1'
        ClearErrors
        ${GetOptions} $1 "/D=" $2
        ${IfNot} ${Errors}
            !insertmacro NoFolder $2
        ${EndIf}
        ReadRegStr $INSTDIR SHCTX "${PRODUCT_KEY}" "Folder" ; where it stands already
    ${EndIf}
    ${If} $INSTDIR == ""
        ${If} $0 == "Admin"
            StrCpy $INSTDIR $WINDIR 2 ; the drive
            StrCpy $INSTDIR "$INSTDIR\Korvanti"
        ${Else}
            StrCpy $INSTDIR "$LOCALAPPDATA\Korvanti"
        ${EndIf}
    ${EndIf}
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/ASSOC" $1
    ${IfNot} ${Errors}
        SectionGetFlags 1 $1 ; the second section
        IntOp $1 $1 | ${SF_SELECTED}
        SectionSetFlags 1 $1
    ${EndIf}
FunctionEnd

Section "Korvanti" MAIN
    SectionIn RO
    ClearErrors
    CreateDirectory "$INSTDIR"
    ${If} ${Errors}
        !insertmacro NoFolder $INSTDIR
    ${EndIf}
    SetOutPath "$INSTDIR"
    !insertmacro StopWhileRunning KV90WIN.exe
    !insertmacro StopWhileRunning korvanti.exe
    File "${STAGE}/KV90WIN.exe"
    File "${STAGE}/korvanti.exe"

    ${IfNot} ${FileExists} "$INSTDIR\KV90.INI"
        File "${STAGE}/KV90.INI"
        WriteINIStr "$INSTDIR\KV90.INI" "System" "Help" 'explorer.exe "$INSTDIR\Guide\operators-guide.html"'
        FlushINI "$INSTDIR\KV90.INI"
    ${EndIf}
    !insertmacro InstallLists

    SetOutPath "$INSTDIR" ; the folder that the shortcuts start in
    CreateDirectory "$SMPROGRAMS\Korvanti"
    CreateShortcut "$SMPROGRAMS\Korvanti\Korvanti.lnk" "$INSTDIR\KV90WIN.exe"
    CreateShortcut "$SMPROGRAMS\Korvanti\Operator's guide.lnk" "$INSTDIR\Guide\operators-guide.html"
    CreateShortcut "$SMPROGRAMS\Korvanti\Installation.lnk" "$INSTDIR\Guide\windows.html"
    CreateShortcut "$SMPROGRAMS\Korvanti\Uninstall Korvanti.lnk" "$INSTDIR\Uninstall.exe"

    WriteRegStr SHCTX "${PRODUCT_KEY}" "Folder" "$INSTDIR"
    WriteUninstaller "$INSTDIR\Uninstall.exe"
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayName" "Korvanti"
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\KV90WIN.exe"
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "Publisher" "Korvanti"
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
    WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "EstimatedSize" ${SIZE}
    WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoModify" 1
    WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoRepair" 1
SectionEnd

; Off until asked for: most shops open their drawings with the design program.
Section /o "Open .dxf drawings with Korvanti" ASSOCIATION
    WriteRegStr SHCTX "${CLASSES}\${DRAWING}" "" "Drawing of a panel"
    WriteRegStr SHCTX "${CLASSES}\${DRAWING}\DefaultIcon" "" "$INSTDIR\KV90WIN.exe,0"
    WriteRegStr SHCTX "${CLASSES}\${DRAWING}\shell\open" "" "Convert with Korvanti"
    WriteRegStr SHCTX "${CLASSES}\${DRAWING}\shell\open\command" "" '"$INSTDIR\KV90WIN.exe" "%1"'
    WriteRegStr SHCTX "${CLASSES}\.dxf\OpenWithProgids" "${DRAWING}" ""
    ReadRegStr $0 SHCTX "${CLASSES}\.dxf" ""
    ${If} $0 != "${DRAWING}"
        WriteRegStr SHCTX "${PRODUCT_KEY}" "DrawingsBefore" $0
        WriteRegStr SHCTX "${CLASSES}\.dxf" "" "${DRAWING}"
    ${EndIf}
    ${RefreshShellIcons}
SectionEnd

LangString MainText ${LANG_ENGLISH} "The window program, the command korvanti, the guide and an example installation."
LangString AssociationText ${LANG_ENGLISH} "A double click on a .dxf drawing converts it. What opened such drawings before \
does so again when Korvanti is uninstalled."
!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
!insertmacro MUI_DESCRIPTION_TEXT ${MAIN} $(MainText)
!insertmacro MUI_DESCRIPTION_TEXT ${ASSOCIATION} $(AssociationText)
!insertmacro MUI_FUNCTION_DESCRIPTION_END

Function un.onInit
    SetRegView 64
    ReadRegStr $0 HKLM "${PRODUCT_KEY}" "Folder"
    ${If} $0 == $INSTDIR ; was installed for everybody
        SetShellVarContext all
    ${EndIf}
FunctionEnd

Section "Uninstall"
    !insertmacro StopWhileRunning KV90WIN.exe
    !insertmacro StopWhileRunning korvanti.exe
    Delete "$INSTDIR\KV90WIN.exe"
    Delete "$INSTDIR\korvanti.exe"
    !insertmacro RemoveLists
    Delete "$INSTDIR\Uninstall.exe"
    Delete "$INSTDIR\.kv-KORVANTI.lock"
    RMDir "$INSTDIR" ; stays while it holds KV90.INI or anything else

    Delete "$SMPROGRAMS\Korvanti\Korvanti.lnk"
    Delete "$SMPROGRAMS\Korvanti\Operator's guide.lnk"
    Delete "$SMPROGRAMS\Korvanti\Installation.lnk"
    Delete "$SMPROGRAMS\Korvanti\Uninstall Korvanti.lnk"
    RMDir "$SMPROGRAMS\Korvanti"

    ReadRegStr $0 SHCTX "${CLASSES}\.dxf" ""
    ${If} $0 == "${DRAWING}"
        ReadRegStr $0 SHCTX "${PRODUCT_KEY}" "DrawingsBefore"
        ${If} $0 == ""
            DeleteRegValue SHCTX "${CLASSES}\.dxf" ""
        ${Else}
            WriteRegStr SHCTX "${CLASSES}\.dxf" "" $0
        ${EndIf}
    ${EndIf}
    DeleteRegValue SHCTX "${CLASSES}\.dxf\OpenWithProgids" "${DRAWING}"
    DeleteRegKey /ifempty SHCTX "${CLASSES}\.dxf\OpenWithProgids"
    DeleteRegKey SHCTX "${CLASSES}\${DRAWING}"
    DeleteRegKey SHCTX "${UNINSTALL_KEY}"
    DeleteRegKey SHCTX "${PRODUCT_KEY}"
    ${RefreshShellIcons}
SectionEnd
