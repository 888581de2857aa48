<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>SettingPictures</name>
    <message>
        <source>阻抗平面</source>
        <translation>R-X Plane</translation>
    </message>
    <message>
        <source>时间配合</source>
        <translation>Times</translation>
    </message>
    <message>
        <source>该保护类型没有阻抗定值，没有阻抗平面图</source>
        <translation>This relay type has no impedance settings and so no R-X picture</translation>
    </message>
    <message>
        <source>一次值</source>
        <translation>Primary</translation>
    </message>
    <message>
        <source>二次值</source>
        <translation>Secondary</translation>
    </message>
    <message>
        <source>相邻支路(&amp;N)</source>
        <translation>&amp;Neighbour</translation>
    </message>
    <message>
        <source>放大（滚轮或 +）</source>
        <translation>Zoom in (wheel or +)</translation>
    </message>
    <message>
        <source>缩小（滚轮或 -）</source>
        <translation>Zoom out (wheel or -)</translation>
    </message>
    <message>
        <source>全图</source>
        <translation>All</translation>
    </message>
    <message>
        <source>显示全图（双击或 0）</source>
        <translation>Show all (double click or 0)</translation>
    </message>
    <message>
        <source>复制</source>
        <translation>Copy</translation>
    </message>
    <message>
        <source>把图复制到剪贴板</source>
        <translation>Copy the picture to the clipboard</translation>
    </message>
    <message>
        <source>导出...</source>
        <translation>Export...</translation>
    </message>
    <message>
        <source>把图存为 SVG 或 PNG 文件</source>
        <translation>Save the picture as an SVG or PNG file</translation>
    </message>
    <message>
        <source>全部（%1）</source>
        <translation>All (%1)</translation>
    </message>
    <message>
        <source>%1（须检查）</source>
        <translation>%1 (check)</translation>
    </message>
    <message>
        <source>没有相邻支路</source>
        <translation>There are no neighbouring branches</translation>
    </message>
    <message>
        <source>图中画哪条相邻支路</source>
        <translation>Which neighbouring branch is drawn</translation>
    </message>
    <message>
        <source>导出图</source>
        <translation>Export Picture</translation>
    </message>
</context>
<context>
    <name>PictureLegend</name>
    <message>
        <source>须检查</source>
        <translation>To be checked</translation>
    </message>
    <message>
        <source>图例</source>
        <translation>Legend</translation>
    </message>
    <message>
        <source>说明</source>
        <translation>Notes</translation>
    </message>
    <message>
        <source>… 其余见提示</source>
        <translation>… the rest: hold the pointer here</translation>
    </message>
</context>
<context>
    <name>PictureExport</name>
    <message>
        <source>不能写文件 %1：%2</source>
        <translation>File %1 cannot be written: %2</translation>
    </message>
</context>
</TS>
