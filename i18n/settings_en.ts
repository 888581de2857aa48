<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>SettingModel</name>
    <message>
        <source>与原定值相差超过 %1%</source>
        <translation>Differs from the stored value by more than %1%</translation>
    </message>
    <message>
        <source>未计算</source>
        <translation>Not calculated</translation>
    </message>
    <message>
        <source>一</source>
        <translation>1</translation>
    </message>
    <message>
        <source>二</source>
        <translation>2</translation>
    </message>
    <message>
        <source>三</source>
        <translation>3</translation>
    </message>
    <message>
        <source>四</source>
        <translation>4</translation>
    </message>
    <message>
        <source>五</source>
        <translation>5</translation>
    </message>
    <message>
        <source>保护安装位置</source>
        <translation>Relay location</translation>
    </message>
    <message>
        <source>定值名称</source>
        <translation>Setting</translation>
    </message>
    <message>
        <source>%1段新定值</source>
        <translation>Stage %1 new</translation>
    </message>
    <message>
        <source>%1段定值</source>
        <translation>Stage %1</translation>
    </message>
    <message>
        <source>%1段原定值</source>
        <translation>Stage %1 stored</translation>
    </message>
    <message>
        <source>单位</source>
        <translation>Unit</translation>
    </message>
    <message>
        <source>%1段变化</source>
        <translation>Stage %1 change</translation>
    </message>
</context>
<context>
    <name>SettingTableBar</name>
    <message>
        <source>导出CSV…</source>
        <translation>Export as CSV…</translation>
    </message>
    <message>
        <source>导出XLSX…</source>
        <translation>Export as XLSX…</translation>
    </message>
    <message>
        <source>复制</source>
        <translation>Copy</translation>
    </message>
    <message>
        <source>只看一个厂站的保护</source>
        <translation>Only the relays of one station</translation>
    </message>
    <message>
        <source>只看有变化的定值</source>
        <translation>Only changed settings</translation>
    </message>
    <message>
        <source>变化超过此值时提示:</source>
        <translation>Warn of changes above:</translation>
    </message>
    <message>
        <source>不提示</source>
        <translation>never</translation>
    </message>
    <message>
        <source>新定值与原定值相差超过这个百分比时加提示标记</source>
        <translation>A new setting that differs from the stored one by more than this percentage is marked</translation>
    </message>
    <message>
        <source>导出</source>
        <translation>Export</translation>
    </message>
    <message>
        <source>全部厂站</source>
        <translation>All stations</translation>
    </message>
    <message>
        <source>显示 %1 / %2 行</source>
        <translation>%1 of %2 rows shown</translation>
    </message>
    <message>
        <source>导出或复制表中所示的定值</source>
        <translation>Exports or copies the settings as shown</translation>
    </message>
    <message>
        <source>表中没有定值</source>
        <translation>The table shows no settings</translation>
    </message>
    <message>
        <source>导出定值</source>
        <translation>Export Settings</translation>
    </message>
    <message>
        <source>定值</source>
        <translation>Settings</translation>
    </message>
    <message>
        <source>定值已导出到%1</source>
        <translation>Settings exported to %1</translation>
    </message>
</context>
<context>
    <name>WinDlgSaveDZ</name>
    <message>
        <source>保存定值</source>
        <translation>Save Settings</translation>
    </message>
    <message>
        <source>一次值</source>
        <translation>Primary values</translation>
    </message>
    <message>
        <source>二次值</source>
        <translation>Secondary values</translation>
    </message>
    <message>
        <source>新定值</source>
        <translation>New settings</translation>
    </message>
    <message>
        <source>原定值</source>
        <translation>Stored settings</translation>
    </message>
    <message>
        <source>保存并修改后备定值</source>
        <translation>Save and Replace Backup</translation>
    </message>
    <message>
        <source>新定值成为当前定值，原定值成为后备定值</source>
        <translation>The new settings become current, the stored ones become the backup</translation>
    </message>
    <message>
        <source>保存并不改变后备定值</source>
        <translation>Save and Keep Backup</translation>
    </message>
    <message>
        <source>新定值成为当前定值，后备定值不变</source>
        <translation>The new settings become current, the backup stays</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>没有可以保存的定值</source>
        <translation>There are no settings to save</translation>
    </message>
    <message>
        <source>定值没有保存，保护的定值没有改变</source>
        <translation>The settings were not saved; the settings of the relays are unchanged</translation>
    </message>
</context>
</TS>
