<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>ChoiceDialog</name>
    <message>
        <source>名称的一部分</source>
        <translation>Part of the name</translation>
    </message>
    <message>
        <source>增加</source>
        <translation>Add</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Remove</translation>
    </message>
    <message>
        <source>全删</source>
        <translation>Remove All</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>共 %1 个</source>
        <translation>Entries: %1</translation>
    </message>
    <message>
        <source>共 %1 个，显示 %2 个</source>
        <translation>Entries: %1, shown: %2</translation>
    </message>
    <message>
        <source>已选 %1 个</source>
        <translation>Selected: %1</translation>
    </message>
</context>
<context>
    <name>WinDlgEditAndSelectPara</name>
    <message>
        <source>参数组选择</source>
        <translation>Parameter Groups</translation>
    </message>
    <message>
        <source>参数组属于整定原则，修改后对所有作业的保护都有效。</source>
        <translation>Parameter groups belong to the setting rule: a change applies to the relays of all cases.</translation>
    </message>
    <message>
        <source>选择</source>
        <translation>Select</translation>
    </message>
    <message>
        <source>参数组号</source>
        <translation>Group</translation>
    </message>
    <message>
        <source>增加</source>
        <translation>Add</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Remove</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>参数组正在别处修改，不能改变</source>
        <translation>The parameter groups are being edited elsewhere and cannot be changed</translation>
    </message>
    <message>
        <source>该整定原则没有参数</source>
        <translation>This setting rule has no parameters</translation>
    </message>
    <message>
        <source>没有参数组</source>
        <translation>There is no parameter group</translation>
    </message>
    <message>
        <source>有 %1 个作业的 %2 套保护采用第 %3 组或其后的参数组。删除后各组重新编号，它们将采用别的参数。
确定删除吗？</source>
        <translation>In %1 cases, %2 relays use parameter group %3 or a later one. The groups are renumbered when this one is deleted, so those relays will use other parameters.
Delete it?</translation>
    </message>
</context>
<context>
    <name>WinDlgSelectRly</name>
    <message>
        <source>选择保护</source>
        <translation>Select Relays</translation>
    </message>
    <message>
        <source>选择方式</source>
        <translation>Selection</translation>
    </message>
    <message>
        <source>指定</source>
        <translation>By hand</translation>
    </message>
    <message>
        <source>电压等级</source>
        <translation>By voltage level</translation>
    </message>
    <message>
        <source>全网</source>
        <translation>Entire network</translation>
    </message>
    <message>
        <source>待选择保护</source>
        <translation>Relays to select from</translation>
    </message>
    <message>
        <source>选择的保护</source>
        <translation>Selected relays</translation>
    </message>
    <message>
        <source>安装位置</source>
        <translation>Location</translation>
    </message>
    <message>
        <source>元件名</source>
        <translation>Name of the element</translation>
    </message>
    <message>
        <source>选择</source>
        <translation>Select</translation>
    </message>
    <message>
        <source>选“指定”后可用</source>
        <translation>Available when selecting by hand</translation>
    </message>
    <message>
        <source>选“电压等级”后可用</source>
        <translation>Available when selecting by voltage level</translation>
    </message>
</context>
<context>
    <name>WinDlgSelectRule</name>
    <message>
        <source>参数组 %1</source>
        <translation>Parameter group %1</translation>
    </message>
    <message>
        <source>整定原则设定</source>
        <translation>Setting Rules</translation>
    </message>
    <message>
        <source>一段</source>
        <translation>Stage 1</translation>
    </message>
    <message>
        <source>二段</source>
        <translation>Stage 2</translation>
    </message>
    <message>
        <source>三段</source>
        <translation>Stage 3</translation>
    </message>
    <message>
        <source>四段</source>
        <translation>Stage 4</translation>
    </message>
    <message>
        <source>五段</source>
        <translation>Stage 5</translation>
    </message>
    <message>
        <source>本段整定</source>
        <translation>Set this stage</translation>
    </message>
    <message>
        <source>选择</source>
        <translation>Select</translation>
    </message>
    <message>
        <source>原则描述</source>
        <translation>Rule</translation>
    </message>
    <message>
        <source>参数描述和参数值</source>
        <translation>Parameters and values</translation>
    </message>
    <message>
        <source>计算公式</source>
        <translation>Formula</translation>
    </message>
    <message>
        <source>整定规则设定应用于本作业所有保护</source>
        <translation>Apply these rules to all relays of this case</translation>
    </message>
    <message>
        <source>其他保护采用同样的整定原则和参数组，它们整定哪些段不变</source>
        <translation>The other relays get the same rules and parameter groups; which stages they set stays as it is</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>作业的整定原则正在别处修改，不能改变</source>
        <translation>The rules of this case are being edited elsewhere and cannot be changed</translation>
    </message>
    <message>
        <source>本段没有整定原则</source>
        <translation>This stage has no setting rules</translation>
    </message>
    <message>
        <source>采用 %1 条，共 %2 条</source>
        <translation>%1 of %2 in use</translation>
    </message>
    <message>
        <source>没有采用任何原则，本段不会有定值</source>
        <translation>No rule is in use: this stage gets no settings</translation>
    </message>
</context>
<context>
    <name>WinDlgselectSYS</name>
    <message>
        <source>选择运行方式</source>
        <translation>Select Operating Modes</translation>
    </message>
    <message>
        <source>待选择运行方式</source>
        <translation>Modes to select from</translation>
    </message>
    <message>
        <source>选择的运行方式</source>
        <translation>Selected modes</translation>
    </message>
</context>
<context>
    <name>shell::BookWindow</name>
    <message>
        <source>工具栏</source>
        <translation>Toolbar</translation>
    </message>
    <message>
        <source>文件(&amp;F)</source>
        <translation>&amp;File</translation>
    </message>
    <message>
        <source>打开(&amp;O)…</source>
        <translation>&amp;Open…</translation>
    </message>
    <message>
        <source>打开</source>
        <translation>Open</translation>
    </message>
    <message>
        <source>重新读入(&amp;R)</source>
        <translation>&amp;Reload</translation>
    </message>
    <message>
        <source>打印(&amp;P)…</source>
        <translation>&amp;Print…</translation>
    </message>
    <message>
        <source>关闭(&amp;C)</source>
        <translation>&amp;Close</translation>
    </message>
    <message>
        <source>编辑(&amp;E)</source>
        <translation>&amp;Edit</translation>
    </message>
    <message>
        <source>复制(&amp;C)</source>
        <translation>&amp;Copy</translation>
    </message>
    <message>
        <source>全选(&amp;A)</source>
        <translation>Select &amp;All</translation>
    </message>
    <message>
        <source>查找(&amp;F)…</source>
        <translation>&amp;Find…</translation>
    </message>
    <message>
        <source>下一个(&amp;N)</source>
        <translation>&amp;Next</translation>
    </message>
    <message>
        <source>上一个(&amp;P)</source>
        <translation>&amp;Previous</translation>
    </message>
    <message>
        <source>视图(&amp;V)</source>
        <translation>&amp;View</translation>
    </message>
    <message>
        <source>放大(&amp;I)</source>
        <translation>Zoom &amp;In</translation>
    </message>
    <message>
        <source>缩小(&amp;O)</source>
        <translation>Zoom &amp;Out</translation>
    </message>
    <message>
        <source>原来大小(&amp;Z)</source>
        <translation>Usual Si&amp;ze</translation>
    </message>
    <message>
        <source>不能读文件 %1：%2</source>
        <translation>Cannot read the file %1: %2</translation>
    </message>
    <message>
        <source>%1 行</source>
        <translation>Lines: %1</translation>
    </message>
    <message>
        <source>不是 GBK 编码的字符，显示为 �：%1 处</source>
        <translation>Characters that are not in GBK, shown as �: %1</translation>
    </message>
    <message>
        <source>文件不存在</source>
        <translation>the file does not exist</translation>
    </message>
    <message>
        <source>这是一个文件夹</source>
        <translation>this is a folder</translation>
    </message>
    <message>
        <source>第 %1 页，共 %2 页</source>
        <translation>Page %1 of %2</translation>
    </message>
    <message>
        <source>要看的计算书</source>
        <translation>calculation book to show</translation>
    </message>
</context>
<context>
    <name>shell::FindLine</name>
    <message>
        <source>上一个 (Shift+F3)</source>
        <translation>Previous (Shift+F3)</translation>
    </message>
    <message>
        <source>下一个 (F3)</source>
        <translation>Next (F3)</translation>
    </message>
    <message>
        <source>要查找的文字</source>
        <translation>Text to find</translation>
    </message>
    <message>
        <source>没有</source>
        <translation>None</translation>
    </message>
</context>
</TS>
